// UTF-8, read one character at a time. The names of sensors come from hardware, so a program that
// prints them may meet control characters and bytes that are not UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;
inline constexpr std::string_view kReplacementUTF8 = "\xEF\xBF\xBD";

/// Takes the next code point off the front of the text; absent if the bytes there are not UTF-8.
/// The longest beginning of a good sequence is then taken as a whole, else one byte.
/// REQUIRES: the text is not empty.
HALVERMONTE_EXPORT std::optional<char32_t> takeCodePoint(std::string_view& text);

/// False for a control character, and for one that reorders what stands around it or cannot be
/// seen: it could pass one text off as another.
HALVERMONTE_EXPORT bool isPrintable(char32_t code);

/// The text with "?" for each character that is not printable, and U+FFFD for bytes that are not
/// UTF-8.
HALVERMONTE_EXPORT std::string printableText(std::string_view text);

}  // namespace halvermonte
