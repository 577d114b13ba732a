#include "monitor/live/Sampler.hpp"

#include <gmock/gmock.h>
#include <poll.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "monitor/Failure.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using namespace std::chrono_literals;

Choice choiceOf(std::unique_ptr<Machine> machine) {
  return {std::make_unique<Sampling>(ChosenMachine{.machine = std::move(machine)}), "a hint"};
}

Choice warmMachine(const Options& /*options*/) {
  auto machine = std::make_unique<TestMachine>();
  machine->keys["TC0P"] = flt(60);
  return choiceOf(std::move(machine));
}

class SamplerOfAMachine : public ::testing::Test {
 protected:
  SamplerOfAMachine() { options.interval = 0; }

  // Waits for the next pass; null if none follows.
  static std::shared_ptr<const Snapshot> next(Sampler& sampler) {
    for (;;) {
      pollfd news{sampler.news(), POLLIN, 0};
      poll(&news, 1, -1);
      if (auto snapshot = sampler.take()) return snapshot;
      if (sampler.hasEnded()) return nullptr;
    }
  }

  Options options;
  HeldMessages messages{HeldMessages::Streams::output};
};

TEST_F(SamplerOfAMachine, HandsOverPassesWithTheirOriginsAndTheHint) {
  options.ticks = Options::kEndless;
  Sampler sampler(options, messages, warmMachine);
  const auto snapshot = next(sampler);
  ASSERT_NE(snapshot, nullptr);
  EXPECT_EQ(snapshot->view.temperatures.front().number, 60);
  EXPECT_EQ(snapshot->view.record, nullptr) << "the next pass changes it";
  EXPECT_NE(snapshot->origins, nullptr);
  EXPECT_EQ(snapshot->hint, "a hint");
}

TEST_F(SamplerOfAMachine, MakesAsManyPassesAsAskedForAfterTheFirst) {
  options.ticks = 3;
  Sampler sampler(options, messages, warmMachine);
  uint64_t last = 0;
  while (const auto snapshot = next(sampler)) last = snapshot->view.number;
  EXPECT_EQ(last, 3U);
}

TEST_F(SamplerOfAMachine, FailureReachesWhoeverAsksForTheEnd) {
  Sampler sampler(options, messages, [](const Options&) -> Choice { throw Failure("no machine"); });
  EXPECT_THROW(next(sampler), Failure);
}

// A machine whose making takes as long as the test wants.
class Gate {
 public:
  void open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
  }
  void pass() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isOpen_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool isOpen_ = false;
};

TEST_F(SamplerOfAMachine, NobodyWaitsForAMachineThatTakesLong) {
  Gate gate;
  Sampler sampler(options, messages, [&gate](const Options& asked) {
    gate.pass();
    return warmMachine(asked);
  });
  EXPECT_EQ(sampler.take(), nullptr);
  EXPECT_FALSE(sampler.stop(0ms));
  gate.open();
  EXPECT_TRUE(sampler.stop(1min));
}

TEST_F(SamplerOfAMachine, MakesNoPassWhileItIsPaused) {
  Gate gate;
  options.ticks = 1;
  Sampler sampler(options, messages, [&gate](const Options& asked) {
    gate.pass();
    return warmMachine(asked);
  });
  sampler.setPaused(true);
  gate.open();
  ASSERT_NE(next(sampler), nullptr) << "there is something to show";
  pollfd news{sampler.news(), POLLIN, 0};
  EXPECT_EQ(poll(&news, 1, 200), 0);
  sampler.setPaused(false);
  EXPECT_NE(next(sampler), nullptr);
}

}  // namespace
}  // namespace halvermonte::test
