// The processes of a Linux computer.
#pragma once

#include <cstdint>
#include <string>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Reads what a process has used, from `proc`. A process that waits only for its parent to notice
/// its end has ended.
Process readProcess(SystemCalls& calls, const std::string& proc, int32_t identifier);

}  // namespace halvermonte::linuxos
