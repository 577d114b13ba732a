// The four-character codes that name a controller's keys and data types.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace halvermonte {

/// The characters as a code, the first one in the most significant byte.
/// REQUIRES: four characters.
constexpr uint32_t fourCharacterCode(std::string_view characters) {
  uint32_t code = 0;
  for (const char character : characters) code = code << 8 | static_cast<uint8_t>(character);
  return code;
}

/// The code's four characters.
inline std::string charactersOf(uint32_t code) {
  std::string characters;
  for (int shift = 24; shift >= 0; shift -= 8) characters += static_cast<char>(code >> shift);
  return characters;
}

}  // namespace halvermonte
