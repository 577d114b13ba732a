// When the next pass is due.
#pragma once

#include <chrono>

namespace halvermonte {

/// Passes are due whole intervals apart, however long each takes.
///
/// The intervals are counted from the moment at which the former pass had read the drives'
/// counters. The engine counts whole seconds from that moment to the same one of the next pass, so
/// a pass that came earlier, even by a microsecond, would have no rate. What delays that moment, a
/// late wake-up and the reading of the drives, therefore delays later passes too. The rest of a
/// pass does not.
///
/// Beats that go by while a pass takes long or the process is stopped are left out.
class Beat {
 public:
  using Clock = std::chrono::steady_clock;

  /// `counted` is that moment of the former pass.
  Beat(Clock::duration interval, Clock::time_point counted, Clock::time_point now);

  Clock::time_point due() const { return due_; }

  /// Call it when the wait until due() is over. Returns false if the beat was missed by far, as the
  /// process was stopped: then a later one is due. This happens at most once.
  bool isOn(Clock::time_point now);

 private:
  /// Leaves out the beats before `now`.
  void skipTo(Clock::time_point now);

  Clock::duration interval_;
  Clock::time_point due_;
  bool wasMissed_ = false;
};

}  // namespace halvermonte
