// Reads what a tick says about drives.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError where the place is not as the format has it.
DriveList readDrives(const JsonPlace& place);

}  // namespace halvermonte
