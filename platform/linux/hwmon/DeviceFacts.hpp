// What a device's own folder says about it: its model, its kind and its place in the computer.
#pragma once

#include <string>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {

/// The drive's model by its maker's name, such as "Samsung SSD 990 PRO 2TB". Reading it sends
/// nothing to the drive.
std::string driveModel(SystemCalls& calls, const Chip& chip);

/// Whether the graphics device is part of the processor.
bool isIntegratedGraphics(SystemCalls& calls, const Chip& chip);

/// The chip's place in words that tell it from another of its kind: "Slot 4", "SATA 2", "I2C 0-48",
/// a PCI path such as "00:1d.0", or the device's own name.
std::string placeOf(SystemCalls& calls, const std::string& sys, const Chip& chip);

}  // namespace halvermonte::linuxos
