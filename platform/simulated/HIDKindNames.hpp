// The names of the HID sensor kinds in a machine file.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace halvermonte {

/// In the order of HIDSensorKind.
inline constexpr auto kHIDKindNames =
    std::to_array<std::string_view>({"temperature", "current", "voltage"});
inline constexpr size_t kHIDSensorKinds = kHIDKindNames.size();

}  // namespace halvermonte
