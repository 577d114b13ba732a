// What a Mac says about itself as a host.
#pragma once

#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte::macos {

HostFacts readHostFacts();

}  // namespace halvermonte::macos
