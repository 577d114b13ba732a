#include "monitor/list/Group.hpp"

#include "monitor/SensorGroups.hpp"

namespace halvermonte {

std::string_view groupNameOf(const SensorSource& sensor) {
  if (sensor.quantity == "fan") return kFanGroup;
  return nameOf(groupOf(sensor.name.empty() ? sensor.label : sensor.name, sensor.driver));
}

}  // namespace halvermonte
