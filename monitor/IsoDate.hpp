// Points in time as ISO 8601 texts.
#pragma once

#include <string>

namespace halvermonte {

/// The point in time in UTC to the nearest millisecond, such as "2026-01-02T03:04:05.678Z"; "" for
/// NaN. A year has four digits: earlier and later times are cut to the first or last such moment.
std::string isoDate(double secondsSince1970);

}  // namespace halvermonte
