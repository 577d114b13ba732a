// The path of a device in the hardware: its only name that stays the same after a reboot or if the
// kernel discovers devices in another order.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace halvermonte::linuxos {

/// The real path of a file or folder, relative to `sys`/devices if it lies there, otherwise to
/// `sys`. Absent if it does not exist.
std::optional<std::string> devicePath(const std::string& sys, const std::string& path);

/// The order of the hardware. Compares component by component: a shorter one comes first, as in
/// "coretemp.2" before "coretemp.10", and equally long ones are in bytewise order, as bus addresses
/// are padded.
bool standsBeforeInHardware(std::string_view first, std::string_view second);

}  // namespace halvermonte::linuxos
