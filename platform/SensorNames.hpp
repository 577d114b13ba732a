// The sensor names that a platform adds to the built-in ones. A Mac adds none, and elsewhere the
// current machine is asked.
#pragma once

#include <vector>

#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {

/// The added names, in order. No key is built in, and none stands twice.
std::vector<SensorName> platformSensorNames();

}  // namespace halvermonte
