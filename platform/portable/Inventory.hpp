// The sensors that a machine knows, and why some of them are not shown.
#pragma once

#include <string>
#include <vector>

namespace halvermonte {

/// One sensor. A machine that knows its sensors only as keys of its controller fills in `key` and
/// leaves the rest empty.
struct SensorListing {
  std::string driver;
  std::string device;    ///< device path: "pci0000:00/0000:00:18.3"
  std::string file;      ///< "temp1_input"
  std::string label;     ///< the kernel's; "" if it gives none
  std::string quantity;  ///< "temperature", "fan", "voltage", "current", "power", "energy",
                         ///< "humidity" or "frequency"
  std::string key;       ///< reads the sensor; "" if it has none
  std::string reason;    ///< why it has no key
  std::string state;     ///< "read", "opened each time", or why there is no reading
  std::string raw;       ///< the file's text; "" if there is none
};

using SensorInventory = std::vector<SensorListing>;

}  // namespace halvermonte
