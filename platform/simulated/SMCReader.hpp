// Reads the `smc` of a tick: the controller and its keys.
#pragma once

#include <cstdint>
#include <string>

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"

namespace halvermonte {

/// Throws MachineFileError if the place does not follow the format.
SMCChange readSMC(const JsonPlace& place);

/// The JSON pointer to the key's answer, however the key is spelled. REQUIRES: a tick that gives
/// it.
std::string pointerToKey(const JsonPlace& tick, uint32_t key);

}  // namespace halvermonte
