// Reads the `drives` of a tick.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
DriveList readDrives(const JsonPlace& place);

}  // namespace halvermonte
