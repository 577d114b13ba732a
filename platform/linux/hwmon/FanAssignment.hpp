// Which key and which name each fan has.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/hwmon/KeyAssignment.hpp"

namespace halvermonte::linuxos {

/// The engine ends the process at an eleventh.
inline constexpr size_t kMostFans = 10;

/// Gives "F0Ac" to "F9Ac" to fans, those of a Mac's controller first. Of more than ten, those have
/// precedence that have a label or turn. Returns them in the order of their keys.
std::vector<const FoundSensor*> assignFans(
    std::vector<FoundSensor>& sensors, const std::function<bool(const FoundSensor&)>& isTurning);

/// The fans' names, each at most 12 characters: the label, else chip and channel. A reader of the
/// names stops at a blank; where two would then be one, their words are joined.
std::vector<std::string> fanNames(const std::vector<const FoundSensor*>& fans);

}  // namespace halvermonte::linuxos
