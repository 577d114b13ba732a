// The characters and numbers of platform objects.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/AnsweredBy.hpp"

namespace halvermonte {
inline namespace HALVERMONTE_PLATFORM {

/// Writes the text into the buffer as UTF-8, in place of its contents.
inline void copyCharacters(CFStringRef text, std::string& buffer) {
  const CFIndex length = CFStringGetLength(text);
  const CFIndex room = CFStringGetMaximumSizeForEncoding(length, kCFStringEncodingUTF8);
  CFIndex used = 0;
  buffer.resize(static_cast<size_t>(room));
  CFStringGetBytes(text, CFRange{0, length}, kCFStringEncodingUTF8, 0, 0,
                   reinterpret_cast<uint8_t*>(buffer.data()), room, &used);
  buffer.resize(static_cast<size_t>(used));
}

inline double doubleOf(CFNumberRef number) {
  double value = 0;
  CFNumberGetValue(number, kCFNumberDoubleType, &value);
  return value;
}

}  // namespace HALVERMONTE_PLATFORM
}  // namespace halvermonte
