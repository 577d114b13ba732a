// Reads what a tick says about the controller and its keys.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError where the place is not as the format has it.
SMCChange readSMC(const JsonPlace& place);

}  // namespace halvermonte
