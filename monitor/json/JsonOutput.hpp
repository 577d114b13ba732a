// Passes as lines of JSON on standard output.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/PassView.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

void printJsonLine(const PassView& view, const Output& output);

/// Prints a line for each pass.
void printJson(Sampling& sampling, const Options& options, const Output& output);

}  // namespace halvermonte
