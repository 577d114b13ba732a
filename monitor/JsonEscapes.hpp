// Characters that JSON texts escape.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte {

/// The escape of a character, such as "\\u009b"; two of them for one beyond the basic plane.
std::string jsonEscape(char32_t code);

/// The JSON text with an escape for each character within a string that is not printable. It reads
/// as the same values. REQUIRES: a well-formed JSON text.
std::string escapedJson(std::string_view json);

}  // namespace halvermonte
