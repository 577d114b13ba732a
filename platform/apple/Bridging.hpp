// Values as they cross between Foundation and the core. What is returned belongs to the calling
// thread's autorelease pool.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

#include "halvermonte/Values.hpp"

namespace halvermonte {

/// REQUIRES: UTF-8. Any character may be in it, NUL too.
NSString* stringOf(std::string_view characters);

/// UTF-8; "" for nil. Half a surrogate pair has no UTF-8 form and is not kept.
std::string charactersOf(NSString* string);

/// Strings, numbers, arrays, dictionaries with strings for keys, and dates become values of their
/// kind. Any other object is carried whole in an Image, and is itself again on its way back.
Value valueOf(id object);

/// The inverse; nil where the value is absent.
id objectOf(const Value& value);

}  // namespace halvermonte
