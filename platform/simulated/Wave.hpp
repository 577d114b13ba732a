// A reading that moves with time.
#pragma once

#include <cmath>
#include <numbers>

namespace halvermonte {

/// A sine wave. REQUIRES: a period other than 0.
struct Wave {
  double mean = 0;
  double amplitude = 0;
  double period = 1;  ///< seconds
  double phase = 0;   ///< periods

  double lowest() const { return mean - std::abs(amplitude); }
  double highest() const { return mean + std::abs(amplitude); }

  /// The reading at the time. The mean if the angle is beyond a double's range.
  double at(double time) const {
    const double angle = 2 * std::numbers::pi * (time / period + phase);
    return std::isfinite(angle) ? mean + amplitude * std::sin(angle) : mean;
  }
};

}  // namespace halvermonte
