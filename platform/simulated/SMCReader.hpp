// Reads the `smc` of a tick: the controller and its keys.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
SMCChange readSMC(const JsonPlace& place);

}  // namespace halvermonte
