// Real system calls at a clock that stands still: a sensor is not slow because the test's computer
// is busy.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::test {

class HeldClock : public linuxos::SystemCalls {
 public:
  /// Outlives every thread of a machine.
  static HeldClock& calls() {
    static HeldClock calls;
    return calls;
  }

  double steadySeconds() override { return 1000; }
  void waitUntil(double, std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                 const std::function<bool()>& isMet) override {
    changed.wait(lock, isMet);
  }
};

}  // namespace halvermonte::test
