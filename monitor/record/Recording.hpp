// A recording of a machine: what it answered, as a machine file.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// Makes the passes and writes what the machine answered in them, also if the run is interrupted.
/// Calls `show` for each pass; without it, prints a line about the recording at the end.
/// REQUIRES: options.recordingPath, and a sampling that has a recorder.
void recordMachine(Sampling& sampling, const Options& options, const Output& output,
                   const ShowPass& show);

}  // namespace halvermonte
