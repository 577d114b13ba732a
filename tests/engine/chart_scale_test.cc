// The scale of the disk chart, by the highest rate of both histories.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/engine/LiteralDisks.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

struct Scale {
  float number;
  std::string text;
};

/// The scale after a pass with these rates.
Scale scaleFor(int64_t readRate, int64_t writeRate) {
  TestMachine machine;
  machine.drives = {DriveStatistics{1, 1}};
  Sampler sampler(machine);
  sampler.pass();
  machine.now += 1;
  machine.drives = {DriveStatistics{1 + readRate, 1 + writeRate}};
  const StatisticsData& record = sampler.pass();
  EXPECT_EQ(record.diskIO_activitiesMax().form(), Number::Form::float32);
  return {record.diskIO_activitiesMax().float32Value(), record.diskIO_activitiesMaxText().str()};
}

TEST(ChartScale, Is50000WhereNothingMoves) {
  EXPECT_EQ(scaleFor(0, 0).number, 50000.0F);
  EXPECT_EQ(scaleFor(0, 0).text, "50 KB");
}

struct Rung {
  int64_t scale;
  int64_t next;
  const char* text;  ///< of the scale; without "/s", which belongs to speeds
};

class ChartScaleRung : public testing::TestWithParam<Rung> {};

TEST_P(ChartScaleRung, HoldsUpToItsOwnValueAndNoFurther) {
  const auto& [scale, next, text] = GetParam();
  const auto asFloat = static_cast<float>(scale);
  EXPECT_EQ(scaleFor(scale, 0).number, asFloat);
  EXPECT_EQ(scaleFor(0, scale).number, asFloat);
  EXPECT_EQ(scaleFor(scale, scale).text, text);
  // The next number that a 32-bit float can hold, which is what the rate is compared as.
  const auto above = static_cast<int64_t>(std::nextafter(std::ceil(asFloat), 1e30F));
  const int64_t beyond = std::max(above, scale + 1);
  EXPECT_EQ(scaleFor(beyond, 0).number, static_cast<float>(next)) << beyond;
  EXPECT_EQ(scaleFor(0, beyond).number, static_cast<float>(next)) << beyond;
}

INSTANTIATE_TEST_SUITE_P(
    Ladder, ChartScaleRung,
    testing::Values(
        Rung{50'000, 100'000, "50 KB"}, Rung{100'000, 500'000, "100 KB"},
        Rung{500'000, 1'000'000, "500 KB"}, Rung{1'000'000, 5'000'000, "1 MB"},
        Rung{5'000'000, 10'000'000, "5 MB"}, Rung{10'000'000, 20'000'000, "10 MB"},
        Rung{20'000'000, 50'000'000, "20 MB"}, Rung{50'000'000, 100'000'000, "50 MB"},
        Rung{100'000'000, 200'000'000, "100 MB"}, Rung{200'000'000, 500'000'000, "200 MB"},
        Rung{500'000'000, 1'000'000'000, "500 MB"}, Rung{1'000'000'000, 2'000'000'000, "1 GB"},
        Rung{2'000'000'000, 5'000'000'000, "2 GB"}, Rung{5'000'000'000, 10'000'000'000, "5 GB"},
        Rung{10'000'000'000, 20'000'000'000, "10 GB"},
        Rung{20'000'000'000, 50'000'000'000, "20 GB"},
        Rung{50'000'000'000, 100'000'000'000, "50 GB"},
        Rung{100'000'000'000, 100'000'000'000, "100 GB"}));

TEST(ChartScale, FollowsTheHigherOfReadsAndWrites) {
  EXPECT_EQ(scaleFor(50'001, 0).number, 100'000.0F);
  EXPECT_EQ(scaleFor(0, 50'001).number, 100'000.0F);
  EXPECT_EQ(scaleFor(100'001, 700'000).number, 1'000'000.0F);
  EXPECT_EQ(scaleFor(700'000, 100'001).number, 1'000'000.0F);
}

TEST(ChartScale, IsA32BitFloat) {
  EXPECT_EQ(static_cast<int64_t>(scaleFor(50'000'000'000, 0).number), 49'999'998'976);
  EXPECT_EQ(static_cast<int64_t>(scaleFor(INT64_MAX / 2, 0).number), 99'999'997'952);
  EXPECT_EQ(scaleFor(INT64_MAX / 2, 0).text, "100 GB") << "its text is of the whole number";
}

TEST(ChartScale, ComparesRatesAs32BitFloats) {
  // 100000001 is not a 32-bit float and becomes 100000000.
  EXPECT_EQ(scaleFor(100'000'001, 0).number, 100'000'000.0F);
}

TEST(ChartScale, StaysForAsLongAsTheHighestRateIsInAHistory) {
  TestMachine machine;
  machine.drives = {DriveStatistics{1, 1}};
  Sampler sampler(machine);
  sampler.pass();
  machine.drives = {DriveStatistics{1, 3'000'001}};
  for (int pass = 0; pass < 75; ++pass) {
    machine.now += 1;
    sampler.pass();
    ASSERT_EQ(sampler.record()->diskIO_activitiesMax().float32Value(), 5'000'000.0F) << pass;
  }
  machine.now += 1;
  sampler.pass();
  EXPECT_EQ(sampler.record()->diskIO_activitiesMax().float32Value(), 50'000.0F);
}

}  // namespace
}  // namespace halvermonte::test
