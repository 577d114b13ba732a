// Names for sensors that programs can rely on.
#pragma once

#include <string>
#include <vector>

#include "monitor/PassView.hpp"

namespace halvermonte {

/// The identifiers of a pass's sensors, in the order of the view. No two are equal.
struct SensorIds {
  std::vector<std::string> temperatures;
  std::vector<std::string> fans;
};

/// Makes them from the display names: "cpu-core-1", and "fan-left" for a fan. They depend on
/// nothing that changes when the computer starts again. The second sensor of a name ends in "-2".
SensorIds sensorIds(const PassView& view);

}  // namespace halvermonte
