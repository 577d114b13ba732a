// Converts between bytes and hex digits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace halvermonte {

/// The bytes, from two digits each. Absent if the text is anything else.
std::optional<std::string> bytesOfHex(std::string_view digits);

/// The digits, two for each byte, in lower case.
std::string hexOfBytes(std::string_view bytes);

}  // namespace halvermonte
