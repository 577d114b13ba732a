// The hardware report, as a Mac's own tool prints it.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/ProcessorName.hpp"

namespace halvermonte::linuxos {

/// The command that asks for it.
inline constexpr std::string_view kHardwareReportCommand =
    "system_profiler SPHardwareDataType -xml";

/// The report about the processor: an XML property list.
std::string hardwareReport(const ProcessorName& processor);

}  // namespace halvermonte::linuxos
