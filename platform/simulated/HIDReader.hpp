// Reads the `hid` of a tick: its sensor services.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
HIDChange readHID(const JsonPlace& place);

}  // namespace halvermonte
