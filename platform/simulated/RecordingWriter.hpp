// Writes a recording as a machine file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/SensorNames.hpp"
#include "platform/simulated/MachineRecorder.hpp"

namespace halvermonte {

struct Recording {
  std::string name;
  bool tellsHostName;  ///< if false, the file has no host name, so that the name replaces it
  std::optional<std::string> hostName;
  std::map<std::string, std::optional<std::string>> commands;
  std::map<std::string, int64_t> kernelVariables;
  std::vector<SensorName> sensorNames;
  bool drivesMatched;  ///< false if the matching call failed
  std::vector<RecordedTick> ticks;
};

std::string writtenAsMachineFile(const Recording& recording);

}  // namespace halvermonte
