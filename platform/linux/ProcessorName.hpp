// The processor's name.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

struct ProcessorName {
  bool isAppleChip = false;
  std::string text;  ///< "" if the computer does not name its processor
};

/// The chip's product name, found by a device tree's `compatible` texts. "" for an unknown chip.
std::string_view appleChip(std::string_view compatible);

ProcessorName processorName(SystemCalls& calls, const std::string& sys, const std::string& proc);

}  // namespace halvermonte::linuxos
