// The computer's names.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// The value that a shell would give the variable after reading the text, which is a list of
/// assignments; absent where it has none for it.
std::optional<std::string> assignedValue(std::string_view text, std::string_view variable);

/// The name that the owner gave the computer in `etc`/machine-info; absent where there is none.
std::optional<std::string> prettyHostName(SystemCalls& calls, const std::string& etc);

/// The host name that the kernel tells in `proc`; absent where it tells none.
std::optional<std::string> kernelHostName(SystemCalls& calls, const std::string& proc);

/// The maker's name of the model; "" where the computer tells none or a placeholder.
std::string modelName(SystemCalls& calls, const std::string& sys);

}  // namespace halvermonte::linuxos
