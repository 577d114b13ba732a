// The command that asks a Mac for its hardware report.
#pragma once

#include <string_view>

namespace halvermonte {

inline constexpr std::string_view kHardwareReportCommand =
    "system_profiler SPHardwareDataType -xml";

}  // namespace halvermonte
