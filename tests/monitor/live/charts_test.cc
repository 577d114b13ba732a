#include "monitor/live/Charts.hpp"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;

std::string bar(int32_t degrees, bool unicode = true) {
  Grid grid({kBarCells, 1});
  drawBar(grid, 0, 0, degrees, glyphsFor(unicode));
  return grid.text();
}

TEST(Bar, HasFiveDegreesForHalfACellAndMarksWhereWarmAndHotBegin) {
  EXPECT_EQ(bar(0), "────────┼┼─\n");
  EXPECT_EQ(bar(45), "━━━━╸───┼┼─\n");
  EXPECT_EQ(bar(48), "━━━━━───┼┼─\n") << "the nearest half";
  EXPECT_EQ(bar(50), "━━━━━───┼┼─\n");
  EXPECT_EQ(bar(95), "━━━━━━━━┿┼─\n");
  EXPECT_EQ(bar(100), "━━━━━━━━┿┿─\n");
}

TEST(Bar, StaysWithinItsEnds) {
  EXPECT_EQ(bar(std::numeric_limits<int32_t>::min()), "────────┼┼─\n");
  EXPECT_EQ(bar(std::numeric_limits<int32_t>::max()), "━━━━━━━━┿┿━\n");
}

TEST(Bar, IsAsciiWithoutUnicode) { EXPECT_EQ(bar(100, false), "========##-\n"); }

TEST(Bar, StandsOutFromWarmOn) {
  EXPECT_EQ(lookOf(79), Look::chart);
  EXPECT_EQ(lookOf(80), Look::warm);
  EXPECT_EQ(lookOf(94), Look::warm);
  EXPECT_EQ(lookOf(95), Look::hot);
}

TEST(Chart, HasTwoSamplesACellWithTheNewestOnTheRight) {
  EXPECT_THAT(chartLines({1, 2, 3, 4}, {0, 4}, 3, 1, glyphsFor(true)), ElementsAre(" ⣠⣾"));
}

TEST(Chart, LeavesOutTheOldestThatDoNotFit) {
  EXPECT_THAT(chartLines({4, 4, 1, 1}, {0, 4}, 1, 1, glyphsFor(true)), ElementsAre("⣀"));
}

TEST(Chart, WhatWasNotReadIsBlank) {
  EXPECT_THAT(chartLines({4, 4, std::nullopt, std::nullopt, std::nullopt, 4}, {0, 4}, 3, 1,
                         glyphsFor(true)),
              ElementsAre("⣿ ⢸"));
}

TEST(Chart, LowestSampleIsNotBlank) {
  EXPECT_THAT(chartLines({0, 0}, {0, 4}, 1, 1, glyphsFor(true)), ElementsAre("⣀"));
}

TEST(Chart, SamplesBeyondTheScaleStayInIt) {
  EXPECT_THAT(chartLines({-5, 9e30F}, {0, 4}, 1, 1, glyphsFor(true)), ElementsAre("⣸"));
}

TEST(Chart, ScaleOfNothingDrawsNoHeight) {
  EXPECT_THAT(chartLines({0, 7}, {0, 0}, 1, 1, glyphsFor(true)), ElementsAre("⣀"));
}

TEST(Chart, FillsItsLinesFromBelow) {
  EXPECT_THAT(chartLines({8, 5, 4, 1}, {0, 8}, 2, 2, glyphsFor(true)), ElementsAre("⣇ ", "⣿⣇"));
}

TEST(Chart, CellOfAsciiShowsTheHigherOfItsTwo) {
  EXPECT_THAT(
      chartLines({1, 4, 3, 2, 1, 1, std::nullopt, std::nullopt}, {0, 4}, 4, 1, glyphsFor(false)),
      ElementsAre("#|. "));
}

TEST(Scale, IsThatOfTheSamples) {
  const Scale scale = scaleOf({40, std::nullopt, 60}, 10);
  EXPECT_EQ(scale.lowest, 40);
  EXPECT_EQ(scale.highest, 60);
}

TEST(Scale, CoversASpanAroundSamplesThatHardlyDiffer) {
  const Scale scale = scaleOf({40, 42}, 10);
  EXPECT_EQ(scale.lowest, 36);
  EXPECT_EQ(scale.highest, 46);
}

TEST(Scale, OfNoSamplesIsTheSpan) {
  const Scale scale = scaleOf({}, 10);
  EXPECT_EQ(scale.lowest, 0);
  EXPECT_EQ(scale.highest, 10);
}

}  // namespace
}  // namespace halvermonte
