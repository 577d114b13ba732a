// A machine on which every command prints the same bytes.
#pragma once

#include <string>

#include "halvermonte/Machine.hpp"

namespace halvermonte {

class CommandOutput : public Machine {
 public:
  CommandOutput(const uint8_t* data, size_t size)
      : output_(reinterpret_cast<const char*>(data), size) {}

  std::optional<std::string> outputOfCommand(const std::string& /*command*/) override {
    return output_;
  }

 private:
  std::string output_;
};

}  // namespace halvermonte
