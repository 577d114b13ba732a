// Counts in words for people.
#pragma once

#include <string>
#include <string_view>

namespace halvermonte {

/// "1 core", "8 cores".
template <class Count>
std::string counted(Count count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

}  // namespace halvermonte
