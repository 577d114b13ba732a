// What stays and what is new when chips come or go.
#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "tests/linux/Computer.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

const std::string kFirstDrive = "pci0000:00/0000:01:00.0/nvme/nvme0";
const std::string kSecondDrive = "pci0000:00/0000:02:00.0/nvme/nvme1";
const std::string kMemory = "pci0000:00/0000:00:1f.4/i2c-0/0-0018";

std::string linkOf(int number) { return "sys/class/hwmon/hwmon" + std::to_string(number); }

class HwmonRescan : public ::testing::Test {
 protected:
  double reading(const std::string& key) { return temperature(machine_, key); }

  /// Adds a chip without keys, so that the next opening looks at all of them again.
  void makeItLookAgain() { addChip(tree, 90, "empty", "virtual/empty", {{"in0", "1"}}); }

  /// Out of the way, not removed: unlike the kernel's, a disk's file system may give the link that
  /// follows the same inode number.
  void unplug(int number, const std::string& device) {
    tree.move(linkOf(number), "sys/former");
    tree.remove("sys/devices/" + device);
  }

  Tree tree;
  WatchedCalls calls;
  const std::string first = keyOf("nvme", kFirstDrive, "Composite");
  const std::string second = keyOf("nvme", kSecondDrive, "Composite");
  LinuxMachine machine_{tree.roots(), {}, calls};
};

TEST_F(HwmonRescan, SensorsOfAChipThatWentDoNotCountAnyMore) {
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  addChip(tree, 1, "nvme", kFirstDrive, {{"temp1", "31000", "Composite"}});
  calls.openFails = failingOn("hwmon1/temp1_input", EACCES);
  EXPECT_EQ(reading(first), -1);
  EXPECT_EQ(machine_.refusedSensors(), 1u);
  unplug(1, kFirstDrive);
  EXPECT_EQ(reading(first), -1);
  EXPECT_EQ(reading("TC0D"), 51);
  EXPECT_EQ(machine_.refusedSensors(), 0u);
  EXPECT_EQ(machine_.inventory().size(), 1u);
}

TEST_F(HwmonRescan, ChipUnderAFormerNumberHasFilesOfItsOwn) {
  addChip(tree, 1, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  tree.write(chipFile(1, "temp1_fault"), "0\n");
  EXPECT_EQ(reading("TC0D"), 51);
  unplug(1, "platform/coretemp.0");
  addChip(tree, 1, "coretemp", "platform/coretemp.0", {{"temp1", "52000", "Package id 0"}});
  tree.write(chipFile(1, "temp1_fault"), "1\n");
  EXPECT_EQ(reading("TC0D"), -1) << "the fault is the new chip's";
  tree.write(chipFile(1, "temp1_fault"), "0\n");
  EXPECT_EQ(reading("TC0D"), 52);
}

TEST_F(HwmonRescan, EachDriveKeepsItsOwnLastValue) {
  addChip(tree, 0, "jc42", kMemory, {{"temp1", "25000"}});
  addChip(tree, 1, "nvme", kFirstDrive, {{"temp1", "31000", "Composite"}});
  addChip(tree, 2, "nvme", kSecondDrive, {{"temp1", "36000", "Composite"}});
  EXPECT_EQ(reading(first), 31);
  EXPECT_EQ(reading(second), 36);
  for (int number = 0; number < 3; ++number) tree.write(chipFile(number, "temp1_input"), "44000\n");
  makeItLookAgain();
  EXPECT_EQ(reading(keyOf("jc42", kMemory)), 44) << "no command goes to a memory module";
  EXPECT_EQ(reading(first), 31);
  EXPECT_EQ(reading(second), 36);
  EXPECT_EQ(listed(machine_, "nvme", "temp1_input").raw, "31000");
  calls.seconds += 10;
  EXPECT_EQ(reading(first), 44);
  EXPECT_EQ(reading(second), 44);
}

TEST_F(HwmonRescan, EachChannelOfADozingDeviceKeepsItsOwnLastValue) {
  const std::string device = "pci0000:00/0000:03:00.0";
  addChip(tree, 0, "amdgpu", device, {{"temp1", "44000", "edge"}, {"temp2", "61000", "junction"}});
  tree.write("sys/devices/" + device + "/power/runtime_status", "active\n");
  tree.write("sys/devices/" + device + "/power/control", "auto\n");
  const std::string edge = keyOf("amdgpu", device, "edge");
  const std::string junction = keyOf("amdgpu", device, "junction");
  EXPECT_EQ(reading(junction), 61);
  EXPECT_EQ(reading(edge), 44);
  makeItLookAgain();
  EXPECT_EQ(reading(junction), 61);
  EXPECT_EQ(reading(edge), 44);
}

TEST_F(HwmonRescan, AnotherDriversChipOfADeviceHasNoLastValueYet) {
  const std::string radio = "pci0000:00/0000:72:00.0";
  addChip(tree, 0, "ath11k_hwmon", radio, {{"temp1", "47000"}});
  EXPECT_EQ(reading(keyOf("ath11k_hwmon", radio)), 47);
  unplug(0, radio);
  addChip(tree, 0, "iwlwifi_1", radio, {{"temp1", "52000"}});
  EXPECT_EQ(reading(keyOf("iwlwifi_1", radio)), 52);
}

TEST_F(HwmonRescan, SensorThatWasLostIsLookedForAtOnce) {
  addChip(tree, 0, "jc42", kMemory, {{"temp1", "25000"}});
  addChip(tree, 1, "nvme", kFirstDrive, {{"temp1", "31000", "Composite"}});
  calls.openFails = failingOn("hwmon0/temp1_input", ENOENT);
  EXPECT_EQ(reading(keyOf("jc42", kMemory)), -1);
  EXPECT_EQ(reading(keyOf("jc42", kMemory)), -1)
      << "from here on it is looked for every ten seconds";
  calls.openFails = nullptr;
  EXPECT_EQ(reading(keyOf("jc42", kMemory)), -1);
  makeItLookAgain();
  EXPECT_EQ(reading(keyOf("jc42", kMemory)), 25);
}

TEST_F(HwmonRescan, LastListedOfTwoThousandChipsIsSeenToGo) {
  for (int number = 0; number < 2000; ++number) {
    tree.link(linkOf(number), "sys/devices/platform/chip" + std::to_string(number));
  }
  std::string last;
  for (const auto& entry : std::filesystem::directory_iterator(tree.at("sys/class/hwmon"))) {
    last = entry.path().filename();
  }
  const std::string device = "platform/chip" + last.substr(std::string("hwmon").size());
  tree.write("sys/devices/" + device + "/name", "coretemp\n");
  tree.write("sys/devices/" + device + "/temp1_label", "Package id 0\n");
  tree.write("sys/devices/" + device + "/temp1_input", "51000\n");
  EXPECT_EQ(reading("TC0D"), 51);
  tree.remove("sys/class/hwmon/" + last);
  EXPECT_EQ(reading("TC0D"), -1);
  EXPECT_EQ(reading("TC0D"), -1) << "chips are looked at once more after a change";
  calls.restart();
  EXPECT_EQ(reading("TC0D"), -1);
  EXPECT_EQ(calls.lists, 1u) << "the room that was needed is kept";
  EXPECT_EQ(calls.folders, 0u);
}

}  // namespace
}  // namespace halvermonte::test
