// Counts as texts for people.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

/// Returns "1 core" or "8 cores".
template <class Count>
std::string counted(Count count, std::string_view noun) {
  return std::to_string(count) + " " + std::string(noun) + (count == 1 ? "" : "s");
}

/// Returns a number of bytes as the record's texts have it, such as "Zero KB", "999 KB" or "1.5
/// MB". Not on macOS.
HALVERMONTE_EXPORT std::string byteCountText(uint64_t bytes);

}  // namespace halvermonte
