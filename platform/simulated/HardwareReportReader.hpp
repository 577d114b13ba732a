// Reads `processor` as the report that "system_profiler SPHardwareDataType -xml" prints.
#pragma once

#include <string>

#include "platform/simulated/JsonPlace.hpp"

namespace halvermonte {

/// An XML property list whose single item has the object's members. Throws MachineFileError where
/// the place is not as the format has it.
std::string readHardwareReport(const JsonPlace& place);

}  // namespace halvermonte
