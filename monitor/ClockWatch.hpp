// Notices when a machine's clock is asked.
#pragma once

#include <chrono>

#include "halvermonte/Machine.hpp"

namespace halvermonte {

/// The engine asks for the time when it has read the drives' counters, and measures from there.
class ClockWatch : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;

  double clock() override {
    const double time = inner_.clock();
    lastAsked_ = std::chrono::steady_clock::now();
    return time;
  }

  std::chrono::steady_clock::time_point lastAsked() const { return lastAsked_; }

 private:
  std::chrono::steady_clock::time_point lastAsked_;
};

}  // namespace halvermonte
