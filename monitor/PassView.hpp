// One pass as a value that every output draws from.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Readings.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

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
  bool isSimulated = false;
  std::string processor;  ///< "" if it is not known
  int32_t cores = 1;      ///< physical; 1 also stands for an unknown number

  // New in each pass.
  uint64_t number = 0;  ///< 0 for the first, which has no rates yet
  std::string hostName;
  int32_t logicalCores = 1;
  std::string uptime;  ///< "3 d 4 h"; "" if it is not known
  std::string memoryUsed;
  std::string memoryTotal;                 ///< "" if it is not known
  std::vector<Reading> temperatures;       ///< the full list
  std::vector<Reading> shortTemperatures;  ///< the short list
  std::vector<Reading> fans;
  DisksView disks;
  std::optional<ProcessUse> process;  ///< absent unless somebody asks for one
  std::chrono::steady_clock::duration cost{};
  std::chrono::steady_clock::time_point counted;  ///< when the drives' bytes had been read
  std::optional<std::string> exception;           ///< why the pass ended early
  std::vector<std::string> complaints;            ///< what the engine printed, without repetitions

  /// The whole record. The next pass changes it.
  std::shared_ptr<const StatisticsData> record;
};

/// Fills in what the record says about the pass.
void readRecord(const std::shared_ptr<const StatisticsData>& record, PassView& view);

}  // namespace halvermonte
