// Float to integer, the same on every processor: truncated toward zero, a value outside the range
// saturates, NaN gives 0.
#pragma once

#include <concepts>
#include <limits>

namespace halvermonte {

template <std::integral Target, std::floating_point Source>
constexpr Target truncated(Source value) noexcept {
  using Limits = std::numeric_limits<Target>;
  // A power of two is exact in every float form, while the largest integer itself may not be.
  constexpr Target kHalf = Limits::max() / 2 + 1;
  constexpr Source kEnd = static_cast<Source>(kHalf) * 2;
  if (value != value) return 0;
  if (value >= kEnd) return Limits::max();
  if (value <= static_cast<Source>(Limits::min())) return Limits::min();
  return static_cast<Target>(value);
}

}  // namespace halvermonte
