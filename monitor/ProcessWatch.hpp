// Measures the CPU use of a process.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "monitor/PassView.hpp"

namespace halvermonte {

class ProcessWatch {
 public:
  using Clock = std::chrono::steady_clock;

  /// A measurement covers at least this time. Kernels count in hundredths of a second, so a shorter
  /// one would be no more than a guess.
  static constexpr Clock::duration kShortest = std::chrono::milliseconds(500);

  /// Begins the first measurement. Throws a Failure if there is no such process, or if the machine
  /// cannot read it. REQUIRES: the machine outlives the object.
  ProcessWatch(Machine& machine, int32_t identifier, Clock::time_point now);

  /// Ends the measurement and begins the next, or returns the former use if it is too early for
  /// that. A process that has ended is not asked for again.
  ProcessUse use(Clock::time_point now);

 private:
  void measure(const ProcessTimes& times, Clock::time_point now);

  Machine& machine_;
  ProcessTimes former_;
  Clock::time_point begin_;
  ProcessUse use_;
};

}  // namespace halvermonte
