// The sums of all drives' bytes.
#include <IOKit/IOKitLib.h>
#include <gtest/gtest.h>

#include "halvermonte/DiskCounters.h"
#include "platform/Foundation.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

class DiskCounters : public testing::Test {
 protected:
  ~DiskCounters() override {
    if (iterator_ != 0) IOObjectRelease(iterator_);
  }

  /// The drives are matched once.
  void match(std::vector<Drive> drives) {
    machine_.drives = std::move(drives);
    IOServiceGetMatchingServices(0, IOServiceMatching("IOBlockStorageDriver"), &iterator_);
    objects_ = portable::liveObjects();
    handles_ = portable::liveHandles();
  }
  void count() {
    getDISKcounters(iterator_, &read_, &written_);
    EXPECT_EQ(portable::liveObjects(), objects_);
    EXPECT_EQ(portable::liveHandles(), handles_);
  }
  void expectSums(uint64_t read, uint64_t written) const {
    EXPECT_EQ(read_.bytes, read);
    EXPECT_EQ(written_.bytes, written);
  }

  TestMachine machine_;
  ScopedMachine scope_{machine_};
  io_iterator_t iterator_ = 0;
  io_stats read_{11, 12, 13, 14, 15};
  io_stats written_{21, 22, 23, 24, 25};
  size_t objects_ = 0;
  size_t handles_ = 0;
};

TEST_F(DiskCounters, AreSumsOverAllDrives) {
  match({DriveStatistics{100, 20}, DriveStatistics{3, 4000}, DriveStatistics{0, 0}});
  count();
  expectSums(103, 4020);
}

TEST_F(DiskCounters, AreZeroWithoutADrive) {
  match({});
  count();
  expectSums(0, 0);
}

TEST_F(DiskCounters, LeaveEveryOtherFieldAlone) {
  match({DriveStatistics{100, 20}});
  count();
  EXPECT_EQ(read_.bytes_delta, 11U);
  EXPECT_EQ(read_.bytes_prev, 12U);
  EXPECT_EQ(read_.bsd_bytes_prev, 14U);
  EXPECT_EQ(read_.bsd_bytes, 15U);
  EXPECT_EQ(written_.bytes_delta, 21U);
  EXPECT_EQ(written_.bytes_prev, 22U);
  EXPECT_EQ(written_.bsd_bytes_prev, 24U);
  EXPECT_EQ(written_.bsd_bytes, 25U);
}

TEST_F(DiskCounters, TakeEachDirectionByItself) {
  match({DriveStatistics{100, std::nullopt}, DriveStatistics{std::nullopt, 20},
         DriveStatistics{std::nullopt, std::nullopt}});
  count();
  expectSums(100, 20);
}

TEST_F(DiskCounters, PassOverDrivesThatTellNothing) {
  match({UnreadableDrive{}, DriveStatistics{100, 20}, DriveWithoutStatistics{}, UnreadableDrive{},
         DriveStatistics{1, 2}});
  count();
  expectSums(101, 22);
}

TEST_F(DiskCounters, WrapAtTheEndOf64Bits) {
  match({DriveStatistics{INT64_MAX, INT64_MAX}, DriveStatistics{INT64_MAX, INT64_MAX},
         DriveStatistics{3, 2}});
  count();
  expectSums(1, 0);
}

TEST_F(DiskCounters, TakeANegativeNumberByItsBits) {
  match({DriveStatistics{-1, -5}, DriveStatistics{0, 3}});
  count();
  expectSums(UINT64_MAX, UINT64_MAX - 1);
}

TEST_F(DiskCounters, LeaveTheIteratorAtItsStart) {
  match({DriveStatistics{100, 20}, DriveStatistics{3, 4}});
  for (int walk = 0; walk < 3; ++walk) {
    machine_.asked.clear();
    count();
    expectSums(103, 24);
    EXPECT_EQ(machine_.asked, std::vector<std::string>({"walk", "drive 0", "drive 1"}));
  }
}

TEST_F(DiskCounters, DoNotSeeDrivesThatCameLater) {
  match({DriveStatistics{100, 20}});
  machine_.drives->push_back(DriveStatistics{5, 5});
  count();
  expectSums(100, 20);
}

TEST_F(DiskCounters, PassOverDrivesThatHaveGone) {
  match({DriveStatistics{100, 20}, DriveStatistics{3, 4}});
  machine_.drives->pop_back();
  count();
  expectSums(100, 20);
}

TEST_F(DiskCounters, StayAsTheyWereIfTheWalkIsBrokenOff) {
  match({DriveStatistics{100, 20}});
  machine_.driveReason = "no";
  EXPECT_THROW(count(), PlatformException);
  expectSums(13, 23);
  EXPECT_EQ(portable::liveHandles(), handles_);
}

}  // namespace
}  // namespace halvermonte::test
