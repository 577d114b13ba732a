// UTF-8, read one character at a time.
#pragma once

#include <optional>
#include <string_view>

namespace halvermonte {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::string_view kReplacementUTF8 = "\xEF\xBF\xBD";

/// Takes the next code point off the front of the text; absent if the bytes there are not UTF-8.
/// The longest beginning of a good sequence is then taken as a whole, else one byte.
/// REQUIRES: the text is not empty.
std::optional<char32_t> takeCodePoint(std::string_view& text);

}  // namespace halvermonte
