// Texts within XML.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte::portable {

/// The text as an element's content, from which a reader gets the same text. REQUIRES: characters
/// that XML can hold.
std::string xmlText(std::string_view text);

}  // namespace halvermonte::portable
