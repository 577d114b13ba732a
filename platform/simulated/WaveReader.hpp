// Reads a `wave`.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
Wave readWave(const JsonPlace& place);

}  // namespace halvermonte
