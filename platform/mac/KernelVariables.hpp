// The kernel's variables, by name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace halvermonte::macos {

/// An integer of 32 or 64 bits; absent if there is none of that name.
std::optional<int64_t> integerVariable(const std::string& name);
/// A text of at most 255 bytes; absent if there is none of that name.
std::optional<std::string> textVariable(const std::string& name);

}  // namespace halvermonte::macos
