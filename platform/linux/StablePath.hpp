// Device paths that stay the same from boot to boot.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// The parts of a PCI address such as "0000:03:00.1".
struct PCIAddress {
  std::string_view slot;      ///< "0000:03:00"; all functions of a device share it
  std::string_view function;  ///< "00.1": device and function, without the bus
};

/// Absent if the step of a path is not a PCI address.
std::optional<PCIAddress> pciAddressOf(std::string_view step);

/// The device path without what may change at a boot, or if other hardware comes or goes: the
/// numbers that the kernel counts up (nvme0, ata7, i2c-3), and the bus numbers behind PCI bridges.
/// What stays is the way to the device: "pci0000:00/0000:00:1d.0/00.0/nvme". A number that has to
/// be looked up, such as the port of a controller, is read from the device's folders below `sys`.
std::string stablePath(SystemCalls& calls, const std::string& sys, std::string_view devicePath);

}  // namespace halvermonte::linuxos
