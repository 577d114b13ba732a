// The sensors of a Mac's HID event system.
#pragma once

#include <memory>

#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte::macos {

/// The services of a kind with their readings; null if the event system returns no list.
std::shared_ptr<const HIDServices> readServices(HIDSensorKind kind);

}  // namespace halvermonte::macos
