// The controller's 17 fixed keys, which a pass reads first and lists last.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// In degrees Celsius, -1.0 for a key without a reading. TB0T is read twice, for the battery and
/// for the enclosure.
inline constexpr size_t kFixedReadings = 17;
using FixedReadings = std::array<double, kFixedReadings>;

FixedReadings readFixedTemperatures(uint32_t conn);

/// Adds the readings from 1 to 109 degrees to the mini list.
void addFixedTemperatures(const FixedReadings& readings, TextPair& mini);

/// The name under which a fixed key's (first) reading is listed; "" for any other key.
std::string_view fixedTemperatureName(std::string_view key);

}  // namespace halvermonte
