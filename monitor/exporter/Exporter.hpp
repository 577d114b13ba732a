// Passes for clients on the network.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"

namespace halvermonte {

/// Makes passes and serves the last one until a signal asks to stop. Throws a Failure if it cannot
/// listen. REQUIRES: the options say where.
void serve(Sampling& sampling, const Options& options);

}  // namespace halvermonte
