// The temperatures and fans of a record as numbers, for hosts that do not show the record's texts.
//
//   for (const Reading& fan : fans(*record)) {
//     draw(fan.name, fan.number, symbolOf(fan.unit));  // "Left", 1200, "rpm"
//   }
//
// A list has the order in which the pass stored it, and is the caller's own. Any thread may call
// these functions. The names and the numbers are two properties of the record: a list that is made
// while a pass stores them may pair the names of one pass with the numbers of another. So make it
// between two passes, or on the thread that makes them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

enum class Unit : uint8_t { degreesCelsius, revolutionsPerMinute };

/// Returns "°C" in UTF-8, or "rpm". The characters are constant, and a NUL follows them.
HALVERMONTE_EXPORT std::string_view symbolOf(Unit unit);

struct Reading {
  std::string name;    ///< UTF-8; may be empty, and may occur more than once in a list
  int32_t number = 0;  ///< a whole number of the unit
  Unit unit = Unit::degreesCelsius;

  bool operator==(const Reading&) const = default;
};

/// The full list of temperatures. A single sensor has 0 to 119 degrees; an average of several is
/// above 0 and has no upper limit. Empty if the computer shows no temperature. Unlike the
/// dictionary `sensors`, the list has every reading of those with one name, and none of an earlier
/// pass.
HALVERMONTE_EXPORT std::vector<Reading> temperatures(const SensorsRecord& record);

/// The short list, for a small display: averages of several sensors and fixed sensors, the latter
/// from 1 to 109 degrees. Some of them are in the full list too, not always with the same number.
HALVERMONTE_EXPORT std::vector<Reading> shortTemperatures(const SensorsRecord& record);

/// The speeds of the fans; 0 for one that stands still or has no reading. Empty if there is none.
HALVERMONTE_EXPORT std::vector<Reading> fans(const SensorsRecord& record);

}  // namespace halvermonte
