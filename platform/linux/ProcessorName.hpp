// The processor's name.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

struct ProcessorName {
  bool isAppleChip = false;
  std::string text;  ///< "" where nothing tells a name
};

/// The name that Apple sells the chip by, from a device tree's `compatible` texts; "" for a chip
/// that is not known.
std::string_view appleChip(std::string_view compatible);

ProcessorName processorName(SystemCalls& calls, const std::string& sys, const std::string& proc);

}  // namespace halvermonte::linuxos
