// The processor: its name and its cores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
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

/// Physical cores of the processors that are online; absent where the kernel tells of none.
std::optional<int64_t> physicalCores(SystemCalls& calls, const std::string& sys,
                                     const std::string& proc);

/// Processor packages that are online; 0 where the kernel tells none.
size_t processorPackages(SystemCalls& calls, const std::string& sys);

/// The hardware report about the processor: an XML property list in the form in which the Mac's own
/// tool prints it.
std::string hardwareReport(const ProcessorName& processor);

/// The command that asks for it.
inline constexpr std::string_view kHardwareReportCommand =
    "system_profiler SPHardwareDataType -xml";

}  // namespace halvermonte::linuxos
