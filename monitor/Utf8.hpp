// UTF-8, read one character at a time.
#pragma once

#include <string_view>

namespace halvermonte {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

/// Takes the next code point off the front of the text. Bytes that are no UTF-8 give U+FFFD; the
/// longest beginning of a good sequence counts as one such place.
/// REQUIRES: the text is not empty.
char32_t takeCodePoint(std::string_view& text);

}  // namespace halvermonte
