// Every question about disks, and every one of construction, fails once in every way in which it
// can.
#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/engine/FaultyMachine.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// Two drives: together, 1000 bytes are read and 2000 written in each second.
struct BusyDrives : TestMachine {
  BusyDrives() { setSecond(0); }

  void setSecond(int64_t second) {
    now = 1'000'000 + static_cast<double>(second);
    drives = {DriveStatistics{10'000 + 400 * second, 20'000 + 800 * second},
              DriveStatistics{10'000 + 600 * second, 20'000 + 1200 * second}};
  }
};

// The questions of a pass before it opens the controller.
enum Place : size_t {
  kWalk,
  kFirstDrive,
  kSecondDrive,
  kMeasuringClock,
  kStampingClock,
  kDiskPlaces
};
constexpr Question kQuestions[] = {Question::driveWalk, Question::drive, Question::drive,
                                   Question::clock, Question::clock};

/// The third of five passes has the fault. Rates are those of the reads since construction; writes
/// are twice as many, and so are their rates but for what a division drops.
struct Fault {
  Place place;
  Way way;
  std::vector<uint64_t> reads;
  std::vector<uint64_t> writes;
  uint64_t total;  ///< the reads' that the third pass publishes; 0: it ends with an exception
};

constexpr uint64_t minus(uint64_t number) { return 0 - number; }

const std::vector<Fault> kFaults = {
    // Guarded: the totals stay, and the next pass has the growth of two seconds in one.
    {kWalk, Way::raises, {0, 1000, 0, 2000, 1000}, {0, 2000, 0, 4000, 2000}, 21'000},
    {kFirstDrive, Way::raises, {0, 1000, 0, 2000, 1000}, {0, 2000, 0, 4000, 2000}, 21'000},
    {kSecondDrive, Way::raises, {0, 1000, 0, 2000, 1000}, {0, 2000, 0, 4000, 2000}, 21'000},
    // A drive that is away takes its bytes from the totals and brings them back.
    {kFirstDrive,
     Way::absent,
     {0, 1000, minus(9800), 11'800, 1000},
     {0, 2000, minus(19'600), 23'600, 2000},
     11'200},
    {kFirstDrive,
     Way::empty,
     {0, 1000, minus(9800), 11'800, 1000},
     {0, 2000, minus(19'600), 23'600, 2000},
     11'200},
    {kSecondDrive,
     Way::absent,
     {0, 1000, minus(10'200), 12'200, 1000},
     {0, 2000, minus(20'400), 24'400, 2000},
     10'800},
    {kSecondDrive,
     Way::empty,
     {0, 1000, minus(10'200), 12'200, 1000},
     {0, 2000, minus(20'400), 24'400, 2000},
     10'800},
    // A wrong time gives no rate in its own pass, and a long interval in the next one.
    {kMeasuringClock, Way::backwards, {0, 1000, 0, 1000, 1000}, {0, 2000, 0, 2000, 2000}, 22'000},
    {kMeasuringClock, Way::notANumber, {0, 1000, 0, 1000, 1000}, {0, 2000, 0, 2000, 2000}, 22'000},
    {kStampingClock, Way::backwards, {0, 1000, 1000, 9, 1000}, {0, 2000, 2000, 19, 2000}, 22'000},
    {kStampingClock, Way::notANumber, {0, 1000, 1000, 0, 1000}, {0, 2000, 2000, 0, 2000}, 22'000},
    // Interrupted, the pass has no rate, unless the histories had it already.
    {kWalk, Way::outOfMemory, {0, 1000, 1000, 1000}, {0, 2000, 2000, 2000}, 0},
    {kFirstDrive, Way::outOfMemory, {0, 1000, 1000, 1000}, {0, 2000, 2000, 2000}, 0},
    {kSecondDrive, Way::outOfMemory, {0, 1000, 1000, 1000}, {0, 2000, 2000, 2000}, 0},
    {kMeasuringClock, Way::outOfMemory, {0, 1000, 500, 1000}, {0, 2000, 1000, 2000}, 0},
    {kStampingClock, Way::outOfMemory, {0, 1000, 1000, 500, 1000}, {0, 2000, 2000, 1000, 2000}, 0},
};

std::vector<uint64_t> ratesOf(const std::vector<Value>& history) {
  std::vector<uint64_t> rates;
  for (const Value& point : history) {
    if (point.asNumber().form() == Number::Form::uint64) {
      rates.push_back(point.asNumber().uint64Value());
    }
  }
  return rates;
}

class DiskFaults : public testing::TestWithParam<Fault> {
 protected:
  void faultyPass(Sampler& sampler, uint64_t total) {
    if (total == 0) {
      EXPECT_THROW(sampler.pass(), std::bad_alloc);
      return;
    }
    sampler.pass();
    EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), total);
    EXPECT_EQ(sampler.record()->diskIO_write().uint64Value(), 2 * total);
  }
};

TEST_P(DiskFaults, CostWhatTheRulesSayAndNoMore) {
  const Fault& fault = GetParam();
  SCOPED_TRACE(described(Call{kQuestions[fault.place], ""}, fault.way));
  BusyDrives machine;
  FaultyMachine faulty(machine);
  Sampler sampler(faulty);
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  testing::internal::CaptureStderr();
  for (int second = 0; second < 5; ++second) {
    machine.setSecond(second);
    if (second == 2) {
      faulty.failAt(fault.place, fault.way);
      faultyPass(sampler, fault.total);
      EXPECT_EQ(faulty.calls().at(fault.place).question, kQuestions[fault.place]);
    } else {
      faulty.listen();
      sampler.pass();
    }
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
  }
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::ranges::count(log, '\n'), fault.way == Way::raises ? 1 : 0) << log;
  EXPECT_EQ(ratesOf(sampler.state().readDiskPoint), fault.reads);
  EXPECT_EQ(ratesOf(sampler.state().writeDiskPoint), fault.writes);
  EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), 24'000U);
  EXPECT_EQ(sampler.record()->diskIO_write().uint64Value(), 48'000U);
}

INSTANTIATE_TEST_SUITE_P(Each, DiskFaults, testing::ValuesIn(kFaults));

TEST(DiskFaultTable, HasEveryWayOfEveryQuestion) {
  size_t ways = 0;
  for (size_t place = 0; place < kDiskPlaces; ++place) {
    for (const Way way : waysOf(kQuestions[place])) {
      ++ways;
      EXPECT_EQ(
          std::ranges::count_if(
              kFaults, [&](const Fault& row) { return row.place == place && row.way == way; }),
          1)
          << described(Call{kQuestions[place], std::to_string(place)}, way);
    }
  }
  EXPECT_EQ(kFaults.size(), ways);
}

/// An M3 of 16 cores, one of whose keys has a name on such a computer alone.
struct LargeM3 : BusyDrives {
  LargeM3() {
    setProcessor("Apple M3 Max");
    kernelVariables["hw.physicalcpu"] = 16;
    keys["Tf4E"] = sp78(50);
    keys["TL0P"] = sp78(40);
  }
};

struct ConstructionFault {
  size_t place;
  Way way;
  Chip chip;
  int32_t cores;
  uint64_t total;  ///< of the drives' reads
};

class ConstructionFaults : public testing::TestWithParam<ConstructionFault> {};

TEST_P(ConstructionFaults, LeaveAnEngineThatKnowsLess) {
  const ConstructionFault& fault = GetParam();
  LargeM3 machine;
  FaultyMachine faulty(machine);
  faulty.failAt(fault.place, fault.way);
  Sampler sampler(faulty);
  SCOPED_TRACE(described(faulty.calls().at(fault.place), fault.way));
  const auto names = expectedNames(fault.chip, fault.cores);
  EXPECT_EQ(entriesOf(sampler.state().smcKeyHumanReadableNames),
            Entries(names.begin(), names.end()));

  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  sampler.pass();
  EXPECT_EQ(portable::liveObjects(), objects);
  EXPECT_EQ(portable::liveHandles(), handles);
  Entries full = {{"LCD Proximity", "40"}};
  if (names.contains("Tf4E")) full.insert(full.begin(), {"CPU Core 10", "50"});
  EXPECT_EQ(sampler.full(), full);
  EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), fault.total);
}

// A construction asks for the processor, the cores and the drives.
INSTANTIATE_TEST_SUITE_P(Each, ConstructionFaults,
                         testing::Values(ConstructionFault{3, Way::none, Chip::m3, 16, 20'000},
                                         ConstructionFault{0, Way::absent, Chip::other, 16, 20'000},
                                         ConstructionFault{0, Way::empty, Chip::other, 16, 20'000},
                                         ConstructionFault{1, Way::absent, Chip::m3, 1, 20'000},
                                         ConstructionFault{2, Way::absent, Chip::m3, 16, 0},
                                         ConstructionFault{2, Way::empty, Chip::m3, 16, 0}));

TEST(ConstructionFaults, OfMemoryLeaveNothingBehind) {
  LargeM3 machine;
  FaultyMachine faulty(machine);
  const ScopedMachine scope(faulty);
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  for (size_t place = 0; place < 3; ++place) {
    faulty.failAt(place, Way::outOfMemory);
    EXPECT_THROW(HalvermonteSensorsEngine(), std::bad_alloc);
    EXPECT_EQ(faulty.calls().size(), place + 1);
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
  }
}

}  // namespace
}  // namespace halvermonte::test
