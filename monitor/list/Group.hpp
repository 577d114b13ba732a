// What a listed sensor belongs to.
#pragma once

#include <string_view>

#include "halvermonte/SensorSources.hpp"

namespace halvermonte {

inline constexpr std::string_view kFanGroup = "Fans";

/// kFanGroup, or the name of a SensorGroup by the sensor's name. A sensor that is not shown belongs
/// where its label says.
std::string_view groupNameOf(const SensorSource& sensor);

}  // namespace halvermonte
