// A recording of a machine: what it answered, as a machine file.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// Makes the passes and writes what the machine answered in them. Each pass is shown if there is
/// something to show it; otherwise a last line says what was recorded.
/// REQUIRES: options.recordingPath, and a sampling that has a recorder.
void recordMachine(Sampling& sampling, const Options& options, const Output& output,
                   const ShowPass& show);

}  // namespace halvermonte
