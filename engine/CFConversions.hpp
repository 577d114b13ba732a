// Platform objects as values of ours.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "halvermonte/Values.hpp"
#include "platform/CFValues.hpp"

namespace halvermonte {

/// The list of texts; absent if there is no list.
Array textsOf(CFArrayRef list);
/// The list of numbers, as 64-bit floats.
Array numbersOf(CFArrayRef list);

}  // namespace halvermonte
