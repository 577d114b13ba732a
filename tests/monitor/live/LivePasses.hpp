// Passes of a machine, handed to a live screen.
#pragma once

#include <chrono>
#include <memory>
#include <utility>

#include "monitor/Sampling.hpp"
#include "monitor/live/LiveScreen.hpp"
#include "monitor/live/Origins.hpp"
#include "monitor/live/Snapshot.hpp"

namespace halvermonte::test {

class LivePasses {
 public:
  explicit LivePasses(std::unique_ptr<Machine> machine)
      : sampling_({.machine = std::move(machine), .isSimulated = true}) {}

  /// Makes passes a second apart, each with the same cost, and shows them.
  void show(LiveScreen& screen, int passes = 1) {
    for (int i = 0; i < passes; ++i) {
      Snapshot snapshot{.view = sampling_.pass(), .origins = nullptr, .hint = ""};
      if (!origins_) {
        origins_ = std::make_shared<const Origins>(
            findOrigins(sampling_.engine(), sampling_.machine(), snapshot.view));
      }
      snapshot.origins = origins_;
      snapshot.view.record.reset();
      snapshot.view.cost = std::chrono::microseconds(800);
      now += std::chrono::seconds(1);
      snapshot.view.counted = now;
      screen.show(std::make_shared<const Snapshot>(std::move(snapshot)));
    }
  }

  std::chrono::steady_clock::time_point now;

 private:
  Sampling sampling_;
  std::shared_ptr<const Origins> origins_;
};

}  // namespace halvermonte::test
