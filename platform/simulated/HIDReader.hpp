// Reads what a tick says about HID sensors.
#pragma once

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError where the place is not as the format has it.
HIDChange readHID(const JsonPlace& place);

}  // namespace halvermonte
