// What a temperature belongs to, by its display name.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace halvermonte {

/// In the order in which outputs show them.
enum class SensorGroup : uint8_t { cpu, gpu, memory, drives, power, airAndBoard, other };

inline constexpr std::array kSensorGroups = {
    SensorGroup::cpu,   SensorGroup::gpu,         SensorGroup::memory, SensorGroup::drives,
    SensorGroup::power, SensorGroup::airAndBoard, SensorGroup::other};

/// Returns "CPU", "Air and board" and the like. The characters are constant.
std::string_view nameOf(SensorGroup group);

/// Returns the group of a temperature. Drives on Linux are named by their model, so their group
/// needs the kernel's driver; "" if there is none.
SensorGroup groupOf(std::string_view displayName, std::string_view driver = "");

}  // namespace halvermonte
