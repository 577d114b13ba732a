// One pass as a value that every output draws from.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

/// Which of the record's lists of temperatures have a sensor.
enum class InLists : uint8_t { full, both, shortAlone };

/// A temperature or a fan of one pass.
struct SensorView {
  std::string name;
  int32_t number = 0;             ///< degrees Celsius, or revolutions per minute
  std::string identity = "";      ///< its own from pass to pass: two sensors may have one name
  InLists lists = InLists::full;  ///< of a temperature
  bool isRead = true;             ///< false if the machine gave no reading in this pass
  std::optional<int32_t> reading = std::nullopt;  ///< the machine's, if another number is shown

  bool operator==(const SensorView&) const = default;
};

/// What all drives together moved in one direction.
struct DiskTraffic {
  float rate = 0;              ///< bytes per second
  std::string rateText;        ///< "1.5 MB/s"
  uint64_t total = 0;          ///< bytes
  std::string totalText;       ///< "12 GB"
  std::vector<float> history;  ///< 75 rates, oldest first; -1 if there is none yet
};

struct DisksView {
  DiskTraffic read;
  DiskTraffic written;
  float historyScale = 0;        ///< the rate at the top of a graph, in bytes per second
  std::string historyScaleText;  ///< "100 MB"
};

struct ProcessUse {
  int32_t identifier = 0;
  /// Since the pass before. Absent if it is not known.
  std::optional<float> percentOfOneCore = std::nullopt;
  bool hasEnded = false;
};

struct PassView {
  // The same in every pass.
  std::string title;  ///< the machine, and why this one if nobody asked for it
  std::string name;   ///< the machine's alone
  bool isSimulated = false;
  std::string processor;  ///< "" if it is not known
  int32_t cores = 1;      ///< physical; 1 also stands for an unknown number
  size_t drives = 0;      ///< those that the engine reads

  // New in each pass.
  uint64_t number = 0;  ///< 0 for the first, which has no rates yet
  std::string hostName;
  int32_t logicalCores = 1;
  std::string uptime;  ///< "3 d 4 h"; "" if it is not known
  std::string memoryUsed;
  std::string memoryTotal;               ///< "" if it is not known
  std::vector<SensorView> temperatures;  ///< the full list, then what the short list adds
  std::vector<SensorView> fans;
  DisksView disks;
  std::optional<ProcessUse> process;  ///< absent unless somebody asks for one
  std::chrono::steady_clock::duration cost{};
  std::chrono::steady_clock::time_point counted;  ///< when the drives' bytes had been read
  double time = 0;  ///< the same by the machine's clock: seconds since 1970-01-01T00:00:00Z
  std::optional<std::string> exception;  ///< why the pass ended early
  std::vector<std::string> complaints;   ///< what the engine printed, without repetitions

  /// The whole record. The next pass changes it.
  std::shared_ptr<const StatisticsData> record;
};

/// Fills in what the record says about the pass.
void readRecord(const std::shared_ptr<const StatisticsData>& record, PassView& view);

}  // namespace halvermonte
