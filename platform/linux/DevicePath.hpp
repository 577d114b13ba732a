// Where a device hangs: the only name of it that a reboot or another order of discovery leaves
// alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace halvermonte::linuxos {

/// The real path of a file or folder, below `sys`/devices where it lies there, else below `sys`;
/// absent where it does not exist.
std::optional<std::string> devicePath(const std::string& sys, const std::string& path);

/// The order of the hardware: component by component, a shorter one first ("coretemp.2" before
/// "coretemp.10"; bus addresses are padded), else bytewise.
bool standsBeforeInHardware(std::string_view first, std::string_view second);

}  // namespace halvermonte::linuxos
