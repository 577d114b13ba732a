// Everything that a machine answers, shown or not.
#pragma once

#include <string>

#include "monitor/Sampling.hpp"

namespace halvermonte {

/// A line for each sensor and drive: its key, its name or why it is not shown, its source, and its
/// reading in the source's own terms.
std::string sensorList(Sampling& sampling);

}  // namespace halvermonte
