// Hex digits as bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace halvermonte {

/// The bytes that the digits stand for, two a byte; absent where the text is not just that.
std::optional<std::string> bytesOfHex(std::string_view digits);

/// The digits of the bytes, two a byte, in lower case.
std::string hexOfBytes(std::string_view bytes);

}  // namespace halvermonte
