// Platform objects as values of ours.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>

#include "halvermonte/Values.hpp"

namespace halvermonte {

/// Writes the text into the buffer as UTF-8, in place of its contents.
void copyCharacters(CFStringRef text, std::string& buffer);

double doubleOf(CFNumberRef number);

/// The list of texts; absent if there is no list.
Array textsOf(CFArrayRef list);
/// The list of numbers, as 64-bit floats.
Array numbersOf(CFArrayRef list);

}  // namespace halvermonte
