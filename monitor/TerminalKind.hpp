// What the environment and the user say about the terminal.
#pragma once

#include "monitor/Options.hpp"

namespace halvermonte {

/// Whether the terminal understands no control sequences, or none is named.
bool isDumbTerminal();

/// Whether a terminal gets colours. If the user leaves that to the terminal, NO_COLOR decides.
bool wantsColour(Colours colours);

/// Whether texts are UTF-8.
bool isUnicode();

/// Whether the terminal's font has more than the characters of one language. The console of Linux
/// has room for 512.
bool hasLargeFont();

}  // namespace halvermonte
