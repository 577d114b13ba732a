// The sensors that a machine knows, and why some of them are not shown.
#pragma once

#include <cstddef>
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

/// How many of a machine's sensors have keys.
struct SensorCounts {
  size_t known = 0;    ///< as of the last opening of the controller
  size_t refused = 0;  ///< how many of them this user was not allowed to read the last time
};

}  // namespace halvermonte
