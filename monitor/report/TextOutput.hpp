// Reports on standard output.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// Prints one report after the other. The first pass is not shown, as it has no rates.
void printReports(Sampling& sampling, const Options& options, const Output& output);

}  // namespace halvermonte
