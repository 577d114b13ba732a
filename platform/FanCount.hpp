// The data of the key that counts the fans, as a controller sends it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "halvermonte/FourCharacterCode.hpp"

namespace halvermonte {

inline constexpr uint32_t kFanCountKey = fourCharacterCode("FNum");

/// The keys of a fan have room for one digit. One fan more, and a pass ends the process.
inline constexpr int32_t kMostFans = 10;

/// A byte is masked away unless its shift, modulo 32, is 0: every fourth one counts, from the last.
/// Bytes beyond the reply's are 0.
template <class Bytes>
constexpr uint32_t fanCount(uint32_t dataSize, const Bytes& bytes) {
  const auto size = static_cast<int32_t>(dataSize);
  const int32_t held = std::min(size, static_cast<int32_t>(std::size(bytes)));
  uint32_t total = 0;
  for (int32_t i = 0; i < held; ++i) {
    const uint32_t places = 8u * static_cast<uint32_t>(size - 1 - i) % 32u;
    total += static_cast<uint32_t>(bytes[static_cast<size_t>(i)]) << places & 0xFFu;
  }
  return total;
}

}  // namespace halvermonte
