// The live view at a terminal.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// Whether this build has a live view, and the output can show it.
bool canShowLive(const Output& output);

/// Shows passes until a person or a signal asks to stop, or until as many are made as the options
/// ask for. Throws a Failure if there is no machine as the options ask for, or no terminal.
void showLive(const Options& options, const Output& output);

}  // namespace halvermonte
