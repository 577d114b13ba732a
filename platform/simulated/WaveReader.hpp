// Reads a wave.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/Wave.hpp"

namespace halvermonte {

/// Throws MachineFileError where the place is not as the format has it.
Wave readWave(const JsonPlace& place);

}  // namespace halvermonte
