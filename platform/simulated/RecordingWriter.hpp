// A recording as the text of a machine file.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/MachineRecorder.hpp"

namespace halvermonte {

struct Recording {
  std::string name;
  bool tellsHostName;  ///< else the file has none, and the name stands for it
  std::optional<std::string> hostName;
  std::map<std::string, std::optional<std::string>> commands;
  std::map<std::string, int64_t> kernelVariables;
  bool drivesMatched;  ///< false: the matching call failed
  std::vector<RecordedTick> ticks;
};

std::string writtenAsMachineFile(const Recording& recording);

}  // namespace halvermonte
