// What the environment says about the terminal.
#pragma once

#include <string_view>

namespace halvermonte {

/// Whether the terminal understands no control sequences, or none is named.
bool isDumbTerminal();

/// Whether colours are wanted: NO_COLOR is not set, or empty.
bool wantsColour();

/// Whether texts are UTF-8.
bool isUnicode();

/// Whether the terminal's font has more than the characters of one language. The console of Linux
/// has room for 512.
bool hasLargeFont();

}  // namespace halvermonte
