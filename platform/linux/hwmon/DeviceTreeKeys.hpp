// The keys of a Mac's controller on Apple silicon. Hardware monitoring has the controller's
// readings, the device tree has their keys.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {

struct DeviceTreeSensor {
  Quantity quantity;
  std::string label;  ///< "" if it has none
  std::string key;
};

/// The controller's sensors in the device tree, in no particular order.
std::vector<DeviceTreeSensor> deviceTreeSensors(SystemCalls& calls, const std::string& sys);

/// The key of the chip's channel, found by its label. "" if more than one sensor or channel has
/// that label. If exactly one sensor and one channel do not match any other, they belong together.
std::string keyOf(const std::vector<DeviceTreeSensor>& sensors, const Chip& chip,
                  const Channel& channel);

}  // namespace halvermonte::linuxos
