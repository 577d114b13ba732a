// Counts processor cores.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Physical cores of the processors that are online. Absent if the kernel lists none.
std::optional<int64_t> physicalCores(SystemCalls& calls, const std::string& sys,
                                     const std::string& proc);

}  // namespace halvermonte::linuxos
