#include "monitor/live/History.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace halvermonte {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const Track kCPU{Quantity::temperature, "CPU"};

class HistoryOfPasses : public ::testing::Test {
 protected:
  void add(std::optional<int32_t> degrees, std::chrono::steady_clock::duration later = 1s,
           double laterByMachine = 1) {
    view.counted += later;
    view.time += laterByMachine;
    view.temperatures.clear();
    if (degrees) {
      view.temperatures.push_back({.name = "CPU", .number = *degrees, .identity = "CPU"});
    }
    history.add(view);
  }

  PassView view;
  History history{History::Duration(1)};
};

TEST_F(HistoryOfPasses, HasTheNewestSamplesOldestFirst) {
  for (const int32_t degrees : {1, 2, 3}) add(degrees);
  EXPECT_THAT(history.newest(kCPU, 2), ElementsAre(2, 3));
  EXPECT_THAT(history.newest(kCPU, 9), ElementsAre(1, 2, 3));
}

TEST_F(HistoryOfPasses, FanAndTemperatureOfOneNameAreApart) {
  view.fans.push_back({.name = "CPU", .number = 1200, .identity = "CPU"});
  add(50);
  EXPECT_THAT(history.newest(kCPU, 9), ElementsAre(50));
  EXPECT_THAT(history.newest({Quantity::fan, "CPU"}, 9), ElementsAre(1200));
}

TEST_F(HistoryOfPasses, SensorThatIsGoneOrNotReadIsAbsent) {
  add(50);
  add(std::nullopt);
  view.temperatures = {{.name = "CPU", .number = 49, .identity = "CPU", .isRead = false}};
  history.add(view);
  EXPECT_THAT(history.newest(kCPU, 9), ElementsAre(50, std::nullopt, std::nullopt));
}

TEST_F(HistoryOfPasses, LongPauseIsAGap) {
  add(50);
  add(51, 3s);
  EXPECT_THAT(history.newest(kCPU, 9), ElementsAre(50, 51)) << "three intervals are none";
  add(52, 3001ms);
  EXPECT_THAT(history.newest(kCPU, 9),
              ElementsAre(50, 51, std::nullopt, std::nullopt, std::nullopt, std::nullopt, 52));
}

TEST_F(HistoryOfPasses, SleepIsAGapAlthoughTheSteadyClockStoodStill) {
  add(50);
  add(51, 1s, 8.0 * 3600);
  EXPECT_THAT(history.newest(kCPU, 9), SizeIs(2 + History::kGap));
}

TEST_F(HistoryOfPasses, ClockThatIsSetBackIsNoGap) {
  add(50);
  add(51, 1s, -8.0 * 3600);
  EXPECT_THAT(history.newest(kCPU, 9), SizeIs(2));
}

TEST_F(HistoryOfPasses, SimulatedSecondsBetweenQuickPassesAreNoGap) {
  history = History(History::Duration(0.01));
  add(50);
  add(51, 10ms, 1);
  EXPECT_THAT(history.newest(kCPU, 9), SizeIs(2));
}

TEST_F(HistoryOfPasses, KeepsNoMoreThanItsRoom) {
  for (size_t i = 0; i < History::kKept + 10; ++i) add(50);
  EXPECT_THAT(history.newest(kCPU, 2 * History::kKept), SizeIs(History::kKept));
}

TEST_F(HistoryOfPasses, ForgetsTheSamplesOfASensorThatIsGoneForLong) {
  add(50);
  for (size_t i = 0; i < History::kKept; ++i) add(std::nullopt);
  EXPECT_THAT(history.newest(kCPU, 9), IsEmpty());
}

TEST_F(HistoryOfPasses, ExtremesAndAverageAreThoseOfAllReadings) {
  EXPECT_EQ(history.extremes(kCPU), nullptr);
  for (const int32_t degrees : {50, 40, 63}) add(degrees);
  view.temperatures = {{.name = "CPU", .number = 1, .identity = "CPU", .isRead = false}};
  history.add(view);
  const Extremes* const extremes = history.extremes(kCPU);
  ASSERT_NE(extremes, nullptr);
  EXPECT_EQ(extremes->lowest, 40);
  EXPECT_EQ(extremes->highest, 63);
  EXPECT_EQ(extremes->average(), 51);
}

}  // namespace
}  // namespace halvermonte
