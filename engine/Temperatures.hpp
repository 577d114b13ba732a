// The temperatures of one pass: from the controller's fixed keys, from the HID event system, and
// from the catalogue's keys. Each source has its own accepted range, on purpose.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/Catalogue.hpp"
#include "engine/SensorsHistory.hpp"
#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// The keys that always go into the mini list. TB0T is read twice, for the battery and the
/// enclosure.
inline constexpr size_t kFixedReadings = 17;
using FixedReadings = std::array<double, kFixedReadings>;

FixedReadings readFixedTemperatures(uint32_t conn);
/// The name under which a fixed key's (first) reading is shown; "" for any other key.
std::string_view fixedTemperatureName(std::string_view key);
void addFixedTemperatures(const FixedReadings& readings, TextPair& mini);

/// The readings of the HID event system at this moment, in whole degrees.
std::vector<int32_t> readHIDTemperatures();
/// Asks for the sensors' names, and adds group averages, then relabelled sensors. Raises a
/// RangeException if there are fewer readings than names.
void addHIDTemperatures(const std::vector<int32_t>& readings, SensorsHistory& history,
                        TemperatureLists& lists);

/// The name under which a HID sensor is shown, its group's where it has one; "" where it is not
/// shown.
std::string_view hidDisplayName(std::string_view product);

/// The highest accepted reading under each display name, in the order shown to people.
void addCatalogueTemperatures(const TemperatureWalk& walk, uint32_t conn, SensorsHistory& history,
                              TextPair& full);

}  // namespace halvermonte
