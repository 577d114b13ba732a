#include "platform/SensorNames.hpp"

#include <vector>

#include "platform/portable/Machine.hpp"

namespace halvermonte {

std::vector<SensorName> platformSensorNames() { return Machine::current().sensorNames(); }

}  // namespace halvermonte
