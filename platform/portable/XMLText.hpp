// Texts within XML.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte::portable {

/// The text as an element's content, of which a reader makes the same text again. It must not hold
/// a character that XML cannot.
std::string xmlText(std::string_view text);

}  // namespace halvermonte::portable
