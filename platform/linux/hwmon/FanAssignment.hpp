// Assigns keys and names to fans.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/hwmon/KeyAssignment.hpp"

namespace halvermonte::linuxos {

/// The engine ends the process if there are more.
inline constexpr size_t kMostFans = 10;

/// Assigns "F0Ac" to "F9Ac" to fans, first to those of a Mac's controller. If there are more than
/// ten, fans that have a label or turn come before others. Returns the fans in the order of their
/// keys.
std::vector<const FoundSensor*> assignFans(
    std::vector<FoundSensor>& sensors, const std::function<bool(const FoundSensor&)>& isTurning);

/// The fans' names, each of at most 12 characters: the label, or chip and channel if there is none.
/// The engine reads a name up to its first space. If two names would then be the same, underscores
/// replace their spaces.
std::vector<std::string> fanNames(const std::vector<const FoundSensor*>& fans);

}  // namespace halvermonte::linuxos
