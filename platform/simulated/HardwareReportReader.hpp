// Makes the hardware report from the `processor` of a machine file.
#pragma once

#include <string>

#include "platform/simulated/JsonPlace.hpp"

namespace halvermonte {

/// An XML property list with a single item that has the object's members. Throws MachineFileError
/// if the place does not follow the format.
std::string readHardwareReport(const JsonPlace& place);

}  // namespace halvermonte
