// The processes of a Mac.
#pragma once

#include <cstdint>

#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte::macos {

Process readProcess(int32_t identifier);

}  // namespace halvermonte::macos
