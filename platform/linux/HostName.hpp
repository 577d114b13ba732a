// The computer's names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// The value that the variable would have after a shell has read the text, a list of assignments.
/// Absent if the text does not assign it.
std::optional<std::string> assignedValue(std::string_view text, std::string_view variable);

/// The name that the owner gave the computer in `etc`/machine-info. Absent if there is none.
std::optional<std::string> prettyHostName(SystemCalls& calls, const std::string& etc);

/// The kernel's host name, from `proc`. Absent if there is none.
std::optional<std::string> kernelHostName(SystemCalls& calls, const std::string& proc);

/// The model's name. "" if the firmware has none or a placeholder.
std::string modelName(SystemCalls& calls, const std::string& sys);

}  // namespace halvermonte::linuxos
