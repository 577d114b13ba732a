// Counts processor cores and packages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Physical cores of the processors that are online. Absent if the kernel lists none.
std::optional<int64_t> physicalCores(SystemCalls& calls, const std::string& sys,
                                     const std::string& proc);

/// Processor packages that are online. 0 if the kernel does not list them.
size_t processorPackages(SystemCalls& calls, const std::string& sys);

}  // namespace halvermonte::linuxos
