// The temperatures of the HID event system: groups as one average each, and the sensors that have a
// display name.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/SensorsHistory.hpp"
#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// The readings at this moment, in whole degrees.
std::vector<int32_t> readHIDTemperatures();

/// Asks for the sensors' names and adds to both lists: group averages of any value, then named
/// sensors from 0 to 110 degrees. Raises a RangeException if there are fewer readings than names.
void addHIDTemperatures(const std::vector<int32_t>& readings, SensorsHistory& history,
                        TemperatureLists& lists);

/// The name under which a sensor is listed, or its group's name; "" if it is not listed.
std::string_view hidDisplayName(std::string_view product);

}  // namespace halvermonte
