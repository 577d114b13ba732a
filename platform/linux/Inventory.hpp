// What a computer's sensors are and why some are not shown.
#pragma once

#include <string>
#include <vector>

namespace halvermonte {

/// One sensor that the kernel offers.
struct SensorListing {
  std::string driver;
  std::string device;    ///< device path: "pci0000:00/0000:00:18.3"
  std::string file;      ///< "temp1_input"
  std::string label;     ///< the kernel's; "" where it gives none
  std::string quantity;  ///< "temperature", "fan", "voltage", "current", "power", "energy",
                         ///< "humidity" or "frequency"
  std::string key;       ///< by which it is read; "" where it has none
  std::string reason;    ///< why it has none
  std::string state;     ///< "read", "opened each time", or why there is no reading
  std::string raw;       ///< the file's text; "" where there is none
};

using SensorInventory = std::vector<SensorListing>;

}  // namespace halvermonte
