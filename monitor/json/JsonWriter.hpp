// The record as JSON lines (docs/record-json.md): numbers and order do not depend on the locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

/// One pass's line, line feed included.
std::string jsonLine(uint64_t tick, const StatisticsData& record);

/// The line of a pass that ended in an exception, line feed included.
std::string jsonLine(uint64_t tick, std::string_view exceptionReason);

}  // namespace halvermonte
