#include "platform/SensorNames.hpp"

#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {

std::vector<SensorName> platformSensorNames() { return Machine::current().sensorNames(); }

}  // namespace halvermonte
