// The readers of a machine file's pieces. Each is given the place of its piece and throws
// MachineFileError where the piece is not as the format has it.
#pragma once

#include <string>

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

Wave readWave(const JsonPlace& place);
SMCChange readSMC(const JsonPlace& place);
HIDChange readHID(const JsonPlace& place);
DriveList readDrives(const JsonPlace& place);

/// The bytes that a hex text stands for.
std::string readHex(const JsonPlace& place, std::string_view expectation);

/// A hardware report, an XML property list whose single item has the object's members.
std::string readHardwareReport(const JsonPlace& place);

}  // namespace halvermonte
