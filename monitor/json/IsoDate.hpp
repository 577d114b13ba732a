// Points in time as ISO 8601 texts.
#pragma once

#include <string>

namespace halvermonte {

/// The point in time in UTC to the nearest millisecond, such as "2026-01-02T03:04:05.678Z". A year
/// has four digits: what lies before 0000 or after 9999 gives that end. "" where it is no number.
std::string isoDate(double secondsSince1970);

}  // namespace halvermonte
