// Which numbers of a sensor are readings. Drivers give others if they have none.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/KeyAssignment.hpp"

namespace halvermonte::linuxos {

/// In the kernel's units.
struct ReadingRule {
  int64_t lowest = 0, highest = 0;
  std::vector<int64_t> constants = {};  ///< not readings
  bool isOpenInput = false;             ///< maybe: no reading before one below kOpenInputs
};

/// Inputs to which nothing is connected drift above this, in thousandths of a degree.
inline constexpr int64_t kOpenInputs = 80000;

ReadingRule readingRuleOf(SystemCalls& calls, const FoundSensor& sensor);

}  // namespace halvermonte::linuxos
