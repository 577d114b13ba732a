// What a machine answers, key by key and service by service, and what becomes of it.
#pragma once

#include <string>

#include "monitor/Sampling.hpp"

namespace halvermonte {

/// A line for each key and sensor that the machine answers at this moment: the key, its display
/// name or why it has none, where it comes from, and what it reads in the source's own terms.
std::string sensorList(Sampling& sampling);

}  // namespace halvermonte
