// What the program does with its passes, by format.
#pragma once

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// One line of JSON a pass.
void printJson(Sampling& sampling, const Options& options, const Output& output);

/// Writes what the machine answers in so many passes into a machine file, with a line that says so
/// or, where JSON was asked for, with the passes' lines.
void recordMachine(Sampling& sampling, const Options& options, const Output& output);

/// Reports one after the other. A first pass is not shown, so that the rates are real.
void printReports(Sampling& sampling, const Options& options, const Output& output);

/// One report at a time, in place. REQUIRES: the output is a terminal with cursor addressing.
void watchReports(Sampling& sampling, const Options& options, const Output& output);

/// Whether the output is such a terminal.
bool canRedraw(const Output& output);

}  // namespace halvermonte
