// Checks a property list before libplist reads it, because libplist calls itself for each level,
// and reads a shared object once for each reference to it.
#pragma once

#include <string_view>

namespace halvermonte::portable {

/// Whether the text closes the element that it opens first, with at most 256 levels inside.
bool isSoundXML(std::string_view text);

/// Whether the list can be walked from its root, with at most 256 levels and 100000 steps.
bool isSoundBinary(std::string_view bytes);

}  // namespace halvermonte::portable
