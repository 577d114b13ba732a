// The data of the key that names a fan, as a controller sends it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvermonte/FourCharacterCode.hpp"

namespace halvermonte {

inline constexpr uint32_t kFanDescriptorType = fourCharacterCode("{fds");
inline constexpr size_t kFanNameOffset = 4;
inline constexpr size_t kFanNameSize = 12;
inline constexpr size_t kFanDescriptorSize = kFanNameOffset + kFanNameSize;

/// Four zero bytes, then the name padded with spaces.
/// REQUIRES: a name of at most kFanNameSize characters.
inline std::array<uint8_t, 32> fanDescriptor(std::string_view name) {
  std::array<uint8_t, 32> bytes{};
  uint8_t* const start = bytes.data() + kFanNameOffset;
  std::fill_n(start, kFanNameSize, uint8_t{' '});
  std::copy(name.begin(), name.end(), start);
  return bytes;
}

}  // namespace halvermonte
