// The keys of a Mac's controller on Apple silicon: hwmon has its readings, the device tree their
// keys.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {

struct DeviceTreeSensor {
  Quantity quantity;
  std::string label;  ///< "" where it has none
  std::string key;
};

/// The sensors that the device tree gives the controller, in no order.
std::vector<DeviceTreeSensor> deviceTreeSensors(SystemCalls& calls, const std::string& sys);

/// The key of the chip's channel, found by its label; "" where more than one has it. Of what no
/// label fits, one sensor and one channel that are left over belong together.
std::string keyOf(const std::vector<DeviceTreeSensor>& sensors, const Chip& chip,
                  const Channel& channel);

}  // namespace halvermonte::linuxos
