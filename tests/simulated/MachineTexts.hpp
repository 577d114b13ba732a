// Short ways to write machine files.
#pragma once

#include <memory>
#include <string>

#include "halvermonte/SimulatedMachine.hpp"

namespace halvermonte {

/// A machine file with the ticks. Each of the other members must end with a comma.
inline std::string machineText(const std::string& ticks, const std::string& members = "") {
  return R"({"name": "Sample", )" + members + R"("ticks": [)" + ticks + "]}";
}

inline std::unique_ptr<SimulatedMachine> machineOf(const std::string& ticks,
                                                   const std::string& members = "") {
  return SimulatedMachine::fromText(machineText(ticks, members), "sample.json");
}

/// A tick that gives these keys of the controller.
inline std::string tickOfKeys(const std::string& keys) {
  return R"({"smc": {"keys": {)" + keys + "}}}";
}

/// The error message for the file. "" if it is valid.
inline std::string refusalOf(const std::string& text) {
  try {
    SimulatedMachine::fromText(text, "sample.json");
  } catch (const MachineFileError& error) {
    return error.what();
  }
  return {};
}

}  // namespace halvermonte
