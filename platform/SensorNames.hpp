// The sensor names that a platform adds to the built-in ones. A Mac adds none, and elsewhere the
// current machine is asked.
#pragma once

#include <string>
#include <vector>

namespace halvermonte {

struct SensorName {
  std::string key;   ///< of the controller: four printable ASCII characters
  std::string name;  ///< for people: UTF-8, one line, not empty
};

/// The added names, in order. No key is built in, and none stands twice.
std::vector<SensorName> platformSensorNames();

}  // namespace halvermonte
