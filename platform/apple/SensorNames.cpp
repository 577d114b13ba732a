#include "platform/SensorNames.hpp"

namespace halvermonte {

std::vector<SensorName> platformSensorNames() { return {}; }

}  // namespace halvermonte
