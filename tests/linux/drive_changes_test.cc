// The totals of drives that go, come back and start to count again.
#include <gmock/gmock.h>

#include <cerrno>
#include <cstdint>
#include <string>
#include <variant>

#include "tests/linux/Computer.hpp"
#include "tests/linux/DriveWalk.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;

class DriveChanges : public ::testing::Test {
 protected:
  /// What the kernel says of the files of a device that has gone, open or not.
  void unplug(const std::string& end) {
    calls.readFails = failingOn(end, ENODEV);
    calls.openFails = failingOn(end, ENOENT);
  }
  void plugInAgain() { calls.readFails = calls.openFails = nullptr; }

  Tree tree;
  WatchedCalls calls;
  LinuxMachine machine{tree.roots(), {}, calls};
};

TEST_F(DriveChanges, DriveThatHasGoneKeepsItsLastCounters) {
  addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
  addDrive(tree, "sdb", "pci0000:00/ata2/block", 20);
  ASSERT_EQ(machine.driveCount(), 2u);
  EXPECT_THAT(walk(machine, 2), ElementsAre(10 * 512, 20 * 512));
  unplug("sda/stat");
  tree.write("sys/block/sdb/stat", statOf(21, 0));
  EXPECT_THAT(walk(machine, 2), ElementsAre(10 * 512, 21 * 512));
  EXPECT_THAT(walk(machine, 2), ElementsAre(10 * 512, 21 * 512));
}

TEST_F(DriveChanges, DriveThatComesBackAddsWhatItMovesFromThenOn) {
  for (const int64_t sectors : {2, 10, 90}) {
    LinuxMachine other(tree.roots(), {}, calls);
    addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
    ASSERT_EQ(other.driveCount(), 1u);
    EXPECT_THAT(walk(other, 1), ElementsAre(10 * 512));
    unplug("sda/stat");
    EXPECT_THAT(walk(other, 1), ElementsAre(10 * 512));
    plugInAgain();
    tree.write("sys/block/sda/stat", statOf(sectors, 0));
    EXPECT_EQ(other.driveCount(), 1u);
    EXPECT_THAT(walk(other, 1), ElementsAre((10 + sectors) * 512));
    EXPECT_THAT(walk(other, 1), ElementsAre((10 + sectors) * 512));
    tree.remove("sys");
  }
}

TEST_F(DriveChanges, DriveThatComesBackElsewhereIsAnotherDriveForLaterEngines) {
  addDrive(tree, "sda", "pci0000:00/usb1/host6/block", 10);
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  unplug("sda/stat");
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  plugInAgain();
  tree.remove("sys/block/sda").remove("sys/devices/pci0000:00/usb1/host6");
  addDrive(tree, "sda", "pci0000:00/usb1/host7/block", 3);
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512)) << "it is not the device of that name";
  EXPECT_EQ(machine.driveCount(), 2u);
  EXPECT_THAT(walk(machine, 2), ElementsAre(10 * 512, 3 * 512));
  EXPECT_EQ(machine.driveCount(), 2u);
}

TEST_F(DriveChanges, DriveThatCannotBeReadKeepsItsLastCounters) {
  addDrive(tree, "sda", "pci0000:00/block", 10);
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  calls.readFails = failingOn("stat", EIO);
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  calls.readFails = nullptr;
  tree.write("sys/block/sda/stat", "");
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  tree.write("sys/block/sda/stat", statOf(12, 0));
  EXPECT_THAT(walk(machine, 1), ElementsAre(12 * 512)) << "it is still the same counter";
}

TEST_F(DriveChanges, PathThatHasGoneTakesNothingFromAMultipathDrive) {
  addDrive(tree, "nvme0n1", "virtual/nvme-subsystem/nvme-subsys0", 0);
  addDrive(tree, "nvme0c0n1", "pci0000:00/0000:01:00.0/nvme/nvme0", 40);
  addDrive(tree, "nvme0c1n1", "pci0000:00/0000:02:00.0/nvme/nvme1", 30);
  for (const char* path : {"nvme0c0n1", "nvme0c1n1"}) {
    tree.write("sys/block/" + std::string(path) + "/hidden", "1\n");
  }
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(walk(machine, 1), ElementsAre((40 + 30) * 512));
  unplug("nvme0c1n1/stat");
  tree.write("sys/block/nvme0c0n1/stat", statOf(45, 0));
  EXPECT_THAT(walk(machine, 1), ElementsAre((45 + 30) * 512));
  plugInAgain();
  tree.write("sys/block/nvme0c1n1/stat", statOf(2, 0));
  EXPECT_THAT(walk(machine, 1), ElementsAre((45 + 30 + 2) * 512));
}

TEST_F(DriveChanges, CounterThatWrapsRisesOnAndTheOtherDoesNotCountTwice) {
  addDrive(tree, "sda", "pci0000:00/block", 0);
  ASSERT_EQ(machine.driveCount(), 1u);
  const auto bytes = [&](int64_t sectorsRead, int64_t sectorsWritten) {
    tree.write("sys/block/sda/stat", statOf(sectorsRead, sectorsWritten));
    return std::get<DriveStatistics>(machine.drive(0));
  };
  constexpr int64_t kMost = UINT32_MAX;
  EXPECT_EQ(bytes(kMost, 10).bytesRead, kMost * 512);
  const DriveStatistics wrapped = bytes(4, 15);
  EXPECT_EQ(wrapped.bytesRead, (kMost + 4) * 512);
  EXPECT_EQ(wrapped.bytesWritten, 15 * 512);
}

TEST_F(DriveChanges, DriveInTheDiskTableKeepsItsCountersAndAddsThoseOfTheNextOne) {
  const auto bytesWith = [&](const std::string& table) {
    tree.write("proc/diskstats", table);
    return walk(machine, 1);
  };
  tree.write("proc/diskstats", " 8 0 sda" + statOf(10, 0));
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(bytesWith(" 8 0 sda" + statOf(20, 0)), ElementsAre(20 * 512));
  EXPECT_THAT(bytesWith(" 8 16 sdb" + statOf(7, 0)), ElementsAre(20 * 512));
  EXPECT_THAT(bytesWith(" 8 0 sda" + statOf(5, 0)), ElementsAre((20 + 5) * 512));
  calls.openFails = failingOn("diskstats", EIO);
  EXPECT_THAT(bytesWith(" 8 0 sda" + statOf(9, 0)), ElementsAre((20 + 5) * 512));
  calls.openFails = nullptr;
  EXPECT_THAT(walk(machine, 1), ElementsAre((20 + 9) * 512));
}

/// Its clock is a second later with each look.
class TickingClock : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;
  double clock() override { return ++seconds_; }

 private:
  double seconds_ = 0;
};

TEST_F(DriveChanges, EngineHasNoRateForADriveThatGoesOrComesBack) {
  addDrive(tree, "sda", "pci0000:00/ata1/block", 1'000'000);
  addDrive(tree, "sdb", "pci0000:00/ata2/block", 1'000'000);
  TickingClock timed(machine);
  Sampler sampler(timed);
  sampler.pass();
  unplug("sda/stat");
  sampler.pass();
  EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), 2'000'000U * 512);
  EXPECT_EQ(sampler.record()->diskIO_speedRead().float32Value(), 0);
  plugInAgain();
  tree.write("sys/block/sda/stat", statOf(100, 0));
  sampler.pass();
  EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), 2'000'100U * 512);
  EXPECT_EQ(sampler.record()->diskIO_speedRead().float32Value(), 100 * 512);
}

}  // namespace
}  // namespace halvermonte::test
