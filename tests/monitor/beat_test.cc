#include "monitor/Beat.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <random>

namespace halvermonte::test {
namespace {

using namespace std::chrono_literals;
using Duration = Beat::Clock::duration;
using Time = Beat::Clock::time_point;

constexpr Time kStart{1000s};

/// A duration between two, another one each time.
class Jitter {
 public:
  Duration between(Duration least, Duration most) {
    return Duration(std::uniform_int_distribution(least.count(), most.count())(random_));
  }

 private:
  std::mt19937 random_{1};
};

TEST(Beat, ThousandPassesKeepItAndNoneCountsBeforeTheIntervalIsOver) {
  Jitter jitter;
  Time now = kStart;
  Time counted = kStart;
  Duration workedFor{};
  constexpr int kPasses = 1000;
  for (int i = 0; i < kPasses; ++i) {
    Beat beat(1s, counted, now);
    now = beat.due() + jitter.between(0us, 100us);
    ASSERT_TRUE(beat.isOn(now));
    const Time started = now;
    now += jitter.between(20us, 100us);
    ASSERT_GE(now - counted, 1s) << "pass " << i << " has no rate";
    counted = now;
    now = started + jitter.between(20ms, 40ms);
    workedFor += now - started;
  }
  const Duration drift = counted - kStart - kPasses * 1s;
  EXPECT_LT(drift, workedFor / 100);
}

TEST(Beat, BeatsDuringALongPassAreLeftOut) {
  EXPECT_EQ(Beat(1s, kStart, kStart + 990ms).due(), kStart + 1s);
  EXPECT_EQ(Beat(1s, kStart, kStart + 1s).due(), kStart + 1s);
  EXPECT_EQ(Beat(1s, kStart, kStart + 1001ms).due(), kStart + 2s);
  EXPECT_EQ(Beat(1s, kStart, kStart + 7300ms).due(), kStart + 8s);
}

TEST(Beat, ProcessThatWasStoppedGoesOnWithTheNextBeat) {
  Beat beat(1s, kStart, kStart);
  EXPECT_FALSE(beat.isOn(kStart + 5400ms));
  EXPECT_EQ(beat.due(), kStart + 6s);
  EXPECT_TRUE(beat.isOn(kStart + 6s));
}

TEST(Beat, LittleDelayIsNoReasonToLeaveABeatOut) {
  EXPECT_TRUE(Beat(1s, kStart, kStart).isOn(kStart + 1100ms));
  EXPECT_FALSE(Beat(1s, kStart, kStart).isOn(kStart + 1101ms));
  EXPECT_TRUE(Beat(60s, kStart, kStart).isOn(kStart + 66s));
  EXPECT_FALSE(Beat(60s, kStart, kStart).isOn(kStart + 67s));
  EXPECT_TRUE(Beat(1ms, kStart, kStart).isOn(kStart + 100ms));
}

TEST(Beat, PassIsNotPutOffTwice) {
  Beat beat(1s, kStart, kStart);
  EXPECT_FALSE(beat.isOn(kStart + 5400ms));
  EXPECT_TRUE(beat.isOn(kStart + 9500ms));
}

TEST(Beat, WithoutAnIntervalAPassIsDueAtOnce) {
  Beat beat(0s, kStart, kStart + 3s);
  EXPECT_EQ(beat.due(), kStart + 3s);
  EXPECT_TRUE(beat.isOn(kStart + 3s));
}

}  // namespace
}  // namespace halvermonte::test
