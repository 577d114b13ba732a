#include "monitor/Beat.hpp"

#include <algorithm>

namespace halvermonte {
namespace {

/// A busy computer wakes a process this late.
constexpr Beat::Clock::duration kUsualLateness = std::chrono::milliseconds(100);

}  // namespace

Beat::Beat(Clock::duration interval, Clock::time_point counted, Clock::time_point now)
    : interval_(interval), due_(counted + interval) {
  skipTo(now);
}

bool Beat::isOn(Clock::time_point now) {
  // The engine divides by whole intervals, so the rates of a late pass are too high by its
  // lateness.
  const Clock::duration lateness = std::max(interval_ / 10, kUsualLateness);
  if (wasMissed_ || now - due_ <= lateness) return true;
  wasMissed_ = true;
  skipTo(now);
  return false;
}

void Beat::skipTo(Clock::time_point now) {
  if (due_ >= now) return;
  if (interval_ == Clock::duration::zero()) {
    due_ = now;
    return;
  }
  const auto beats = (now - due_ + interval_ - Clock::duration(1)) / interval_;
  due_ += beats * interval_;
}

}  // namespace halvermonte
