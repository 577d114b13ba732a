// Every sensor and drive that a machine knows, shown or not.
#pragma once

#include <string>

#include "monitor/Options.hpp"
#include "monitor/Sampling.hpp"

namespace halvermonte {

/// A heading for each group, and below it a line for each sensor: its name, its reading in its
/// unit, its key, where it comes from, the reading in the source's own terms, and which list shows
/// it or why none does.
std::string sensorList(Sampling& sampling, const Options& options);

/// The same as one line of JSON (docs/sensor-list-json.md), in the order of the machine.
std::string sensorListJson(Sampling& sampling);

}  // namespace halvermonte
