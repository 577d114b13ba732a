#include <gmock/gmock.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/linux/DriveCounters.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/DriveWalk.hpp"
#include "tests/linux/FewDescriptors.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

std::vector<int64_t> drivesOf(const Tree& tree) {
  LinuxMachine machine(tree.roots());
  return walk(machine, machine.driveCount().value_or(99));
}

TEST(DriveStatistics, SectorsHave512BytesInEveryFormatOfTheFile) {
  for (const char* form : {"1 2 3 4 5 6 7 8 9 10 11", "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n",
                           "  1  2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\r\n"}) {
    const auto drive = linuxos::driveStatistics(form);
    ASSERT_TRUE(drive) << form;
    EXPECT_EQ(drive->bytesRead, 3 * 512);
    EXPECT_EQ(drive->bytesWritten, 7 * 512);
  }
}

TEST(DriveStatistics, OtherTextsGiveNoStatistics) {
  for (const char* text : {"", "\n", "1 2 3 4 5 6 7 8 9 10", "a b c d e f g h i j k",
                           "1 2 x 4 5 6 7 8 9 10 11", "1 2 3 4 5 6 -7 8 9 10 11"}) {
    EXPECT_FALSE(linuxos::driveStatistics(text)) << text;
  }
}

TEST(BlockDrives, EncryptedVolumesOnAMirrorCountAsTheTwoDisksBelow) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/block", 100);
  addDrive(tree, "sdb", "pci0000:00/0000:00:17.0/ata2/host1/target1:0:0/1:0:0:0/block", 200);
  tree.write(
      "sys/devices/pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0/block/sda/sda1/stat",
      statOf(90, 0));
  for (const char* name : {"md127", "dm-0", "dm-1", "loop0", "zram0", "ram0"}) {
    addDrive(tree, name, "virtual/block", 300);
  }
  EXPECT_THAT(drivesOf(tree), ElementsAre(100 * 512, 200 * 512));
}

TEST(BlockDrives, DeviceWithSlavesIsNotADrive) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/ata1/block", 100);
  addDrive(tree, "stack", "platform/stack", 300);
  tree.link("sys/devices/platform/stack/stack/slaves/sda", "sys/block/sda");
  EXPECT_THAT(drivesOf(tree), ElementsAre(100 * 512));
}

TEST(BlockDrives, MultipathDriveCountsOnce) {
  Tree tree;
  const std::string head = "virtual/nvme-subsystem/nvme-subsys0";
  addDrive(tree, "nvme0n1", head, 70);
  addDrive(tree, "nvme0c0n1", "pci0000:00/0000:01:00.0/nvme/nvme0", 40);
  addDrive(tree, "nvme0c1n1", "pci0000:00/0000:02:00.0/nvme/nvme1", 30);
  addDrive(tree, "nvme0c1n11", "pci0000:00/0000:02:00.0/nvme/nvme1", 5);
  for (const char* path : {"nvme0c0n1", "nvme0c1n1", "nvme0c1n11"}) {
    tree.write("sys/block/" + std::string(path) + "/hidden", "1\n");
  }
  EXPECT_THAT(drivesOf(tree), ElementsAre(70 * 512));
  tree.write("sys/devices/" + head + "/nvme0n1/stat", statOf(0, 0));
  EXPECT_THAT(drivesOf(tree), ElementsAre((40 + 30) * 512))
      << "kernels before 6.2 count only the paths";
}

TEST(BlockDrives, MultipathDriveCountsOnceInTheDiskTable) {
  Tree tree;
  const std::string paths = " 259 1 nvme0c0n1" + statOf(40, 1) + " 259 2 nvme0c1n1" +
                            statOf(30, 2) + " 259 3 nvme0c1n11" + statOf(5, 5);
  tree.write("proc/diskstats", " 259 0 nvme0n1" + statOf(70, 9) + paths);
  EXPECT_THAT(drivesOf(tree), ElementsAre(70 * 512));
  tree.write("proc/diskstats", " 259 0 nvme0n1" + statOf(0, 0) + paths);
  EXPECT_THAT(drivesOf(tree), ElementsAre((40 + 30) * 512));
}

TEST(BlockDrives, IdleDriveTakesNothingFromOthers) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/ata1/block", 0);
  addDrive(tree, "nvme0n1", "virtual/nvme-subsystem/nvme-subsys0", 0);
  addDrive(tree, "nvme1n1", "virtual/nvme-subsystem/nvme-subsys1", 0);
  addDrive(tree, "nvme1c0n1", "pci0000:00/0000:01:00.0/nvme/nvme1", 40);
  tree.write("sys/block/nvme1c0n1/hidden", "1\n");
  addDrive(tree, "nvme2n1", "virtual/nvme-subsystem/nvme-subsys2", 5);
  EXPECT_THAT(drivesOf(tree), UnorderedElementsAre(0, 0, 40 * 512, 5 * 512));
  Tree other;
  other.write("proc/diskstats", " 259 0 nvme0n1" + statOf(0, 0) + " 259 1 nvme1c0n1" +
                                    statOf(40, 0) + " 259 2 nvme1n1" + statOf(0, 0) +
                                    " 259 3 nvme2n1" + statOf(5, 0) + " 8 0 sda" + statOf(0, 0));
  EXPECT_THAT(drivesOf(other), UnorderedElementsAre(0, 0, 40 * 512, 5 * 512));
}

TEST(BlockDrives, EmptyCardReaderAndOpticalDriveDoNotCount) {
  Tree tree;
  addDrive(tree, "sdc", "pci0000:00/usb1/host6/target6:0:0/6:0:0:0/block", 1);
  tree.write("sys/block/sdc/size", "0\n");
  addDrive(tree, "sr0", "pci0000:00/ata3/host2/target2:0:0/2:0:0:0/block", 2);
  addDrive(tree, "fd0", "platform/floppy.0/block", 3);
  addDrive(tree, "mmcblk0", "platform/mmc/mmc_host/mmc0/mmc0:0001/block", 4);
  addDrive(tree, "mmcblk0boot0", "platform/mmc/mmc_host/mmc0/mmc0:0001/block/mmcblk0", 5);
  addDrive(tree, "nbd0", "virtual/block", 6);
  EXPECT_THAT(drivesOf(tree), ElementsAre(4 * 512));
}

TEST(BlockDrives, DrivesAreInTheOrderOfTheHardware) {
  Tree tree;
  addDrive(tree, "sdb", "pci0000:00/host2/block", 1);
  addDrive(tree, "sda", "pci0000:00/host10/block", 2);
  addDrive(tree, "vda", "pci0000:00/0000:00:0a.0/virtio1/block", 3);
  addDrive(tree, "vdb", "pci0000:00/0000:00:09.0/virtio2/block", 4);
  EXPECT_THAT(drivesOf(tree), ElementsAre(1 * 512, 2 * 512, 4 * 512, 3 * 512));
}

TEST(BlockDrives, DiskTableIsUsedWithoutABlockFolder) {
  Tree tree;
  tree.write("proc/diskstats",
             " 259 0 nvme0n1 1 0 11 0 0 0 0 0 0 0 0\n 259 1 nvme0n1p1 1 0 9 0 0 0 0 0 0 0 0\n"
             " 259 2 nvme0c0n1 1 0 9 0 0 0 0 0 0 0 0\n 202 0 xvda 1 0 12 0 0 0 0 0 0 0 0\n"
             " 202 1 xvda1 1 0 9 0 0 0 0 0 0 0 0\n 179 0 mmcblk0 1 0 13 0 0 0 0 0 0 0 0\n"
             " 179 1 mmcblk0p1 1 0 9 0 0 0 0 0 0 0 0\n 253 0 dm-0 1 0 9 0 0 0 0 0 0 0 0\n"
             " 7 0 loop0 1 0 9 0 0 0 0 0 0 0 0\n 11 0 sr0 1 0 9 0 0 0 0 0 0 0 0\nsda\n\n");
  // They are in the order of their names, as the table has no device paths.
  EXPECT_THAT(drivesOf(tree), ElementsAre(12 * 512, 13 * 512, 11 * 512));
}

TEST(BlockDrives, DiskTableIsReadAgainForEachWalk) {
  Tree tree;
  tree.write("proc/diskstats", " 8 0 sda 1 0 10 0 0 0 0 0 0 0 0\n");
  LinuxMachine machine(tree.roots());
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(walk(machine, 1), ElementsAre(10 * 512));
  tree.write("proc/diskstats", " 8 0 sda 1 0 20 0 0 0 0 0 0 0 0\n");
  EXPECT_THAT(walk(machine, 1), ElementsAre(20 * 512));
}

TEST(BlockDrives, CountersAreReadInEachWalk) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/block", 1);
  LinuxMachine machine(tree.roots());
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_THAT(walk(machine, 1), ElementsAre(1 * 512));
  tree.write("sys/block/sda/stat", statOf(2, 0));
  EXPECT_THAT(walk(machine, 1), ElementsAre(2 * 512));
}

TEST(BlockDrives, DriveThatWasNeverReadIsUnreadable) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/block", 1);
  LinuxMachine machine(tree.roots());
  ASSERT_EQ(machine.driveCount(), 1u);
  for (const std::string& garbage : {std::string(), std::string(1 << 20, '7')}) {
    tree.write("sys/block/sda/stat", garbage);
    EXPECT_THAT(walk(machine, 1), ElementsAre(-1));
  }
  tree.write("sys/block/sda/stat", statOf(3, 0));
  EXPECT_THAT(walk(machine, 1), ElementsAre(3 * 512));
}

TEST(BlockDrives, DanglingLinksAndMissingFoldersAreNotDrives) {
  Tree tree;
  EXPECT_THAT(drivesOf(tree), IsEmpty());
  tree.link("sys/block/sda", "sys/devices/nowhere");
  EXPECT_THAT(drivesOf(tree), IsEmpty());
}

TEST(BlockDrives, IndexBeyondTheListIsUnreadableAndLiesNowhere) {
  Tree tree;
  LinuxMachine machine(tree.roots());
  const auto isUnreadable = [&](size_t index) {
    return std::holds_alternative<UnreadableDrive>(machine.drive(index));
  };
  ASSERT_EQ(machine.driveCount(), 0u);
  EXPECT_TRUE(isUnreadable(0));
  EXPECT_EQ(machine.driveSource(0), "");
  addDrive(tree, "sda", "pci0000:00/block", 1);
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_FALSE(isUnreadable(0));
  EXPECT_EQ(machine.driveSource(0), "pci0000:00/block/sda/stat");
  EXPECT_TRUE(isUnreadable(1));
  EXPECT_EQ(machine.driveSource(1), "");
  EXPECT_TRUE(isUnreadable(SIZE_MAX));
}

TEST(BlockDrives, SourceInATableIsTheTableAndTheName) {
  Tree tree;
  tree.write("proc/diskstats", " 8 0 sda" + statOf(1, 0));
  LinuxMachine machine(tree.roots());
  ASSERT_EQ(machine.driveCount(), 1u);
  EXPECT_EQ(machine.driveSource(0), tree.at("proc/diskstats").string() + " sda");
}

TEST(BlockDrives, FilesAreOpenedForEachReadIfDescriptorsAreShort) {
  Tree tree;
  for (int i = 0; i < 30; ++i) {
    addDrive(tree, "sd" + std::string(1, static_cast<char>('a' + i % 26)) + (i < 26 ? "" : "a"),
             "pci0000:00/host" + std::to_string(i) + "/block", i + 1);
  }
  const FewDescriptors few(24);
  LinuxMachine machine(tree.roots());
  ASSERT_EQ(machine.driveCount(), 30u);
  const std::vector<int64_t> bytes = walk(machine, 30);
  for (size_t i = 0; i < bytes.size(); ++i) {
    EXPECT_EQ(bytes[i], static_cast<int64_t>(i + 1) * 512);
  }
  EXPECT_EQ(machine.outputOfCommand("echo free"), "free\n") << "the host has some left";
}

/// Holds all descriptors below a number, so that this one is the next to be given.
class HeldDescriptors {
 public:
  explicit HeldDescriptors(int next) {
    int number = dup(STDERR_FILENO);
    for (; number >= 0 && number < next; number = dup(STDERR_FILENO)) held_.push_back(number);
    EXPECT_EQ(number, next);
    close(number);
  }
  HeldDescriptors(const HeldDescriptors&) = delete;
  HeldDescriptors& operator=(const HeldDescriptors&) = delete;
  ~HeldDescriptors() {
    for (const int number : held_) close(number);
  }

 private:
  std::vector<int> held_;
};

/// How often two walks open the counters of a drive that gets the descriptor.
size_t opensWith(rlim_t limit, int descriptor) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/block", 1);
  WatchedCalls calls;
  LinuxMachine machine(tree.roots(), {}, calls);
  EXPECT_EQ(machine.driveCount(), 1u);
  const FewDescriptors few(limit);
  const HeldDescriptors held(descriptor);
  EXPECT_THAT(walk(machine, 1), ElementsAre(1 * 512));
  EXPECT_THAT(walk(machine, 1), ElementsAre(1 * 512));
  return calls.opens("/stat");
}

TEST(BlockDrives, LastQuarterOfTheDescriptorsAtMost64IsLeftToTheHost) {
  constexpr size_t kKeptOpen = 1;
  EXPECT_EQ(opensWith(100, 74), kKeptOpen);
  EXPECT_GT(opensWith(100, 75), kKeptOpen);
  EXPECT_EQ(opensWith(256, 191), kKeptOpen);
  EXPECT_GT(opensWith(256, 192), kKeptOpen);
  EXPECT_EQ(opensWith(1000, 935), kKeptOpen);
  EXPECT_GT(opensWith(1000, 936), kKeptOpen);
}

TEST(BlockDrives, SingleFailureIsCorrectedAtTheNextWalk) {
  Tree tree;
  addDrive(tree, "sda", "pci0000:00/block", 1);
  addDrive(tree, "sdb", "pci0001:00/block", 2);
  for (int failing = 0;; ++failing) {
    int call = 0;
    WatchedCalls calls;
    calls.openFails =
        calls.readFails = [&](std::string_view) { return call++ == failing ? EIO : 0; };
    LinuxMachine machine(tree.roots(), {}, calls);
    const std::vector<int64_t> first = walk(machine, machine.driveCount().value_or(0));
    if (call <= failing) break;
    EXPECT_THAT(first, Each(AnyOf(-1, 1 * 512, 2 * 512)));
    EXPECT_THAT(walk(machine, machine.driveCount().value_or(0)),
                UnorderedElementsAre(1 * 512, 2 * 512))
        << "call " << failing;
  }
}

TEST(BlockDrives, DrivesOfThisComputerAreReadable) {
  LinuxMachine machine;
  const size_t count = machine.driveCount().value_or(0);
  for (const int64_t bytes : walk(machine, count)) EXPECT_GE(bytes, 0);
}

}  // namespace
}  // namespace halvermonte::test
