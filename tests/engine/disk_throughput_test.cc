// Disk totals, rates and histories, pass by pass.
#include <gtest/gtest.h>

#include <random>

#include "tests/engine/LiteralDisks.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// One drive whose totals and clock a test sets, and what the passes over it publish.
class DiskThroughput : public testing::Test {
 protected:
  const StatisticsData& pass(double now, int64_t read, int64_t written) {
    machine_.now = now;
    machine_.drives = {DriveStatistics{read, written}};
    machine_.asked.clear();
    return sampler_.pass();
  }
  void expectRates(uint64_t read, uint64_t written) const {
    EXPECT_EQ(described(sampler_.state().readDiskPoint.back()), "uint64 " + std::to_string(read));
    EXPECT_EQ(described(sampler_.state().writeDiskPoint.back()),
              "uint64 " + std::to_string(written));
  }

  /// Has a drive when the engine matches.
  struct OneDrive : TestMachine {
    OneDrive() { drives = {DriveStatistics{0, 0}}; }
  };
  OneDrive machine_;
  Sampler sampler_{machine_};
};

std::vector<std::string> describedAll(const Array& array) {
  std::vector<std::string> texts;
  for (const Value& element : array) texts.push_back(described(element));
  return texts;
}

TEST_F(DiskThroughput, HasTotalsAndNoRatesInTheFirstPass) {
  const StatisticsData& record = pass(1000, 5'000'000, 6'000'000);
  EXPECT_EQ(described(record.diskIO_read()), "uint64 5000000");
  EXPECT_EQ(described(record.diskIO_write()), "uint64 6000000");
  EXPECT_EQ(record.diskIO_readText(), "5 MB");
  EXPECT_EQ(record.diskIO_writeText(), "6 MB");
  EXPECT_EQ(described(record.diskIO_speedRead()), described(Number::ofFloat32(0)));
  EXPECT_EQ(described(record.diskIO_speedWrite()), described(Number::ofFloat32(0)));
  EXPECT_EQ(record.diskIO_speedReadText(), "0 KB/s");
  EXPECT_EQ(record.diskIO_speedWriteText(), "0 KB/s");
}

TEST_F(DiskThroughput, HasOneSlotFilledAfterTheFirstPass) {
  const Array activities = pass(1000, 5'000'000, 6'000'000).diskIO_activities();
  ASSERT_EQ(activities.size(), 2U);
  for (const Value& history : activities) {
    std::vector<std::string> expected(74, "int32 -1");
    expected.emplace_back("uint64 0");
    EXPECT_EQ(describedAll(history.asArray()), expected);
  }
}

TEST_F(DiskThroughput, IsTheGrowthPerWholeSecond) {
  pass(1000, 1'000'000, 1'000'000);
  pass(1002.5, 6'000'000, 1'000'003);
  expectRates(2'500'000, 1);
}

TEST_F(DiskThroughput, IsNoneBelowOneSecondAndForgetsWhatMovedMeanwhile) {
  pass(1000, 1'000'000, 1'000'000);
  pass(1000.9, 6'000'000, 7'000'000);
  expectRates(0, 0);
  EXPECT_EQ(sampler_.record()->diskIO_read().uint64Value(), 6'000'000U);
  pass(1001.9, 6'000'500, 7'000'600);
  expectRates(500, 600);
}

TEST_F(DiskThroughput, DividesAlmostTwoSecondsByOne) {
  pass(1000, 1'000, 1'000);
  pass(1001.9, 3'000, 4'000);
  expectRates(2'000, 3'000);
}

TEST_F(DiskThroughput, IsNoneIfTheClockWentBackOrStoodStill) {
  pass(1000, 1'000, 1'000);
  pass(990, 3'000, 4'000);
  expectRates(0, 0);
  pass(990, 5'000, 5'000);
  expectRates(0, 0);
  pass(991, 6'000, 7'000);
  expectRates(1'000, 2'000);
}

TEST_F(DiskThroughput, WaitsForBothUntilThereWereReads) {
  pass(1000, 0, 1'000);
  pass(1001, 0, 5'000);
  expectRates(0, 0);
  pass(1002, 9'000, 8'000);
  expectRates(0, 0);
  pass(1003, 9'500, 8'200);
  expectRates(500, 200);
}

TEST_F(DiskThroughput, NeedsNoEarlierWrites) {
  pass(1000, 1'000, 0);
  pass(1001, 1'000, 5'000);
  expectRates(0, 5'000);
}

// Nobody guards against it: such a rate fills the chart until it has moved out.
TEST_F(DiskThroughput, IsHugeIfATotalWentDown) {
  pass(1000, 5'000, 5'000);
  pass(1002, 4'998, 6'000);
  expectRates(UINT64_MAX / 2, 500);
  EXPECT_EQ(sampler_.record()->diskIO_speedReadText(), "9.22 EB/s");
  EXPECT_EQ(sampler_.record()->diskIO_activitiesMax().float32Value(), 99999997952.0F);
  pass(1003, 5'000, 6'000);
  expectRates(2, 0);
}

TEST_F(DiskThroughput, ShowsASpeedBeyondSigned64BitsAsTheLargest) {
  pass(1000, 5'000, 5'000);
  pass(1001, 4'999, 5'000);
  expectRates(UINT64_MAX, 0);
  EXPECT_EQ(sampler_.record()->diskIO_speedRead().float32Value(), 18446744073709551616.0F);
  EXPECT_EQ(sampler_.record()->diskIO_speedReadText(), "9.22 EB/s");
}

TEST_F(DiskThroughput, ShowsATotalByTheBitsOfASignedNumber) {
  const StatisticsData& record = pass(1000, -1, INT64_MIN);
  EXPECT_EQ(record.diskIO_read().uint64Value(), UINT64_MAX);
  EXPECT_EQ(record.diskIO_readText(), "-1 byte");
  EXPECT_EQ(record.diskIO_writeText(), "-9.22 EB");
}

struct Speed {
  int64_t rate;
  const char* text;
};

TEST_F(DiskThroughput, IsShownAboveAThousandBytesPerSecond) {
  double now = 1000;
  int64_t total = 1;
  pass(now, total, total);
  for (const auto& [rate, text] :
       {Speed{0, "0 KB/s"}, Speed{999, "0 KB/s"}, Speed{1000, "0 KB/s"}, Speed{1001, "1 KB/s"},
        Speed{1500, "2 KB/s"}, Speed{1'500'000, "1.5 MB/s"}, Speed{2'340'000'000, "2.34 GB/s"}}) {
    total += rate;
    const StatisticsData& record = pass(now += 1, total, total);
    EXPECT_EQ(record.diskIO_speedReadText(), text) << rate;
    EXPECT_EQ(record.diskIO_speedWriteText(), text) << rate;
    EXPECT_EQ(described(record.diskIO_speedRead()),
              described(Number::ofFloat32(static_cast<float>(rate))));
    EXPECT_EQ(described(record.diskIO_speedWrite()),
              described(Number::ofFloat32(static_cast<float>(rate))));
  }
}

TEST_F(DiskThroughput, KeepsReadsAndWritesApart) {
  pass(1000, 1'000'000, 2'000'000);
  const StatisticsData& record = pass(1001, 4'000'000, 9'000'000);
  EXPECT_EQ(record.diskIO_speedRead().float32Value(), 3'000'000.0F);
  EXPECT_EQ(record.diskIO_speedWrite().float32Value(), 7'000'000.0F);
  EXPECT_EQ(record.diskIO_speedReadText(), "3 MB/s");
  EXPECT_EQ(record.diskIO_speedWriteText(), "7 MB/s");
  EXPECT_EQ(record.diskIO_read().uint64Value(), 4'000'000U);
  EXPECT_EQ(record.diskIO_write().uint64Value(), 9'000'000U);
  EXPECT_EQ(record.diskIO_readText(), "4 MB");
  EXPECT_EQ(record.diskIO_writeText(), "9 MB");
}

TEST_F(DiskThroughput, LosesPrecisionInTheSpeedsAndNotInTheHistories) {
  pass(1000, 1, 1);
  const StatisticsData& record = pass(1001, 16'777'218, 33'554'440);
  EXPECT_EQ(record.diskIO_speedRead().float32Value(), 16'777'216.0F);
  EXPECT_EQ(record.diskIO_speedWrite().float32Value(), 33'554'440.0F);
  expectRates(16'777'217, 33'554'439);
}

TEST_F(DiskThroughput, PublishesWritesBeforeReads) {
  pass(1000, 1, 1);
  const Array activities = pass(1001, 11, 21).diskIO_activities();
  EXPECT_EQ(describedAll(activities[0].asArray()).back(), "uint64 20");
  EXPECT_EQ(describedAll(activities[1].asArray()).back(), "uint64 10");
}

TEST_F(DiskThroughput, PublishesCopiesThatLaterPassesLeaveAlone) {
  const Array first = pass(1000, 1, 1).diskIO_activities();
  const std::string before = described(first);
  const Array second = pass(1001, 11, 21).diskIO_activities();
  EXPECT_EQ(described(first), before);
  EXPECT_NE(described(second), before);
  EXPECT_FALSE(second.isSame(first));
}

TEST_F(DiskThroughput, KeepsTheLast75Rates) {
  int64_t total = 1;
  for (int i = 0; i < 80; ++i) {
    total += i;
    pass(1000 + i, total, 2 * total);
    ASSERT_EQ(sampler_.state().readDiskPoint.size(), 75U);
    ASSERT_EQ(sampler_.state().writeDiskPoint.size(), 75U);
  }
  std::vector<std::string> reads;
  std::vector<std::string> writes;
  for (int i = 5; i < 80; ++i) {
    reads.push_back("uint64 " + std::to_string(i));
    writes.push_back("uint64 " + std::to_string(2 * i));
  }
  const Array activities = sampler_.record()->diskIO_activities();
  EXPECT_EQ(describedAll(activities[0].asArray()), writes);
  EXPECT_EQ(describedAll(activities[1].asArray()), reads);
}

TEST_F(DiskThroughput, StampsTheTimeOfThePass) {
  pass(1000.25, 1, 1);
  EXPECT_EQ(sampler_.state().lastDataFetch.secondsSince1970(), 1000.25);
  pass(1003, 1, 1);
  EXPECT_EQ(sampler_.state().lastDataFetch.secondsSince1970(), 1003);
}

/// A clock that goes on by a quarter of a second with each look at it.
class TickingMachine : public TestMachine {
 public:
  double clock() override { return now += 0.25; }
};

TEST(DiskThroughputClock, StampsALaterLookThanItMeasuresBy) {
  TickingMachine machine;
  machine.drives = {DriveStatistics{1000, 1000}};
  Sampler sampler(machine);
  sampler.pass();
  const double stamped = sampler.state().lastDataFetch.secondsSince1970();
  machine.now = stamped + 0.75;
  machine.drives = {DriveStatistics{3000, 4000}};
  sampler.pass();  // measures at 1.0 seconds, and stamps at 1.25
  EXPECT_EQ(sampler.state().readDiskPoint.back().asNumber().uint64Value(), 2000U);
  EXPECT_EQ(sampler.state().lastDataFetch.secondsSince1970(), stamped + 1.25);
}

std::vector<std::string> expectedHistory(const std::vector<std::optional<uint64_t>>& rates) {
  std::vector<std::string> texts;
  for (const auto& rate : rates) {
    texts.push_back(rate ? "uint64 " + std::to_string(*rate) : "int32 -1");
  }
  return texts;
}

TEST_F(DiskThroughput, IsThatOfTheLiteralRulesOverRandomTotalsAndClocks) {
  std::mt19937_64 random(75);
  LiteralDisks literal;
  double now = 1000;
  uint64_t read = 0;
  uint64_t written = 5;
  for (int i = 0; i < 600; ++i) {
    // Growth of every size, seldom a fall; intervals of up to four seconds, seldom backwards.
    read += random() % 20 == 0 ? 0 - random() % 5000 : random() >> (20 + random() % 44);
    written += random() % 20 == 0 ? 0 - random() % 5000 : random() >> (20 + random() % 44);
    if (random() % 50 == 0) read = 0;
    now += random() % 20 == 0 ? -1.0 : static_cast<double>(random() % 64) / 16;
    literal.pass(read, written, now);
    const StatisticsData& record =
        pass(now, static_cast<int64_t>(read), static_cast<int64_t>(written));
    const Array activities = record.diskIO_activities();
    ASSERT_EQ(describedAll(activities[0].asArray()), expectedHistory(literal.writes()));
    ASSERT_EQ(describedAll(activities[1].asArray()), expectedHistory(literal.reads()));
    ASSERT_EQ(record.diskIO_activitiesMax().float32Value(), static_cast<float>(literal.scale()));
  }
}

}  // namespace
}  // namespace halvermonte::test
