// Whether a text is plain ASCII.
#pragma once

#include <algorithm>
#include <string_view>

namespace halvermonte {

inline bool isASCII(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char character) { return static_cast<unsigned char>(character) < 0x80; });
}

}  // namespace halvermonte
