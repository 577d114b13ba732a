// Passes for clients on the network.
#pragma once

#include "monitor/Options.hpp"

namespace halvermonte {

/// Makes passes over the machine and serves the last one until a signal asks to stop. Throws a
/// Failure if a file is not as it should be, if there is no such machine, or if it cannot listen.
/// REQUIRES: the options say where.
void serve(const Options& options);

}  // namespace halvermonte
