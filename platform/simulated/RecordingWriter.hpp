// Writes a recording as a machine file.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/simulated/HIDKindNames.hpp"

namespace halvermonte {

/// What a machine answered in the course of one tick. Absent: it was not asked.
struct RecordedTick {
  struct Key {
    std::optional<SMCKeyInfo> info;
    std::optional<SMCKeyBytes> data;
  };

  std::optional<double> time;
  std::optional<SMCService> service;
  std::optional<uint32_t> openCode;
  bool answersWideCalls = true;
  std::map<uint32_t, Key> keys;
  /// By HIDSensorKind; null if there is no list.
  std::array<std::optional<std::shared_ptr<const HIDServices>>, kHIDSensorKinds> hid;
  std::vector<Drive> drives;
  std::optional<std::string> drivesRaise;
};

struct Recording {
  std::string name;
  bool tellsHostName;  ///< if false, the file has no host name, so that the name replaces it
  std::optional<std::string> hostName;
  std::map<std::string, std::optional<std::string>> commands;
  std::map<std::string, int64_t> kernelVariables;
  std::vector<SensorName> sensorNames;
  bool drivesMatched = false;  ///< false if the matching call failed
  std::vector<RecordedTick> ticks{1};

  RecordedTick& tick() { return ticks.back(); }
};

std::string writtenAsMachineFile(const Recording& recording);

}  // namespace halvermonte
