// What the monitor says of a computer that shows less than it might.
#include <gmock/gmock.h>

#include <cerrno>
#include <memory>
#include <string>

#include "monitor/MachineChoice.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/WatchedCalls.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr const char* kNothing =
    "no sensors and no drives to read here (see --machine list for simulated computers)";
constexpr const char* kNoSensors =
    "no temperatures and no fans to read here: a virtual machine, a container, or drivers that are "
    "not loaded";
constexpr const char* kOtherSensors =
    "the sensors here are neither temperatures nor fans (see --list)";

std::string noneOf(int sensors) {
  return "none of the sensors here gives a reading that is shown: " + std::to_string(sensors) +
         " (see --list)";
}

class Hint : public ::testing::Test {
 protected:
  std::string hint() {
    auto computer = std::make_unique<LinuxMachine>(tree.roots(), ComputerOptions(), calls);
    return chooseMachine(Options(), std::move(computer)).hint;
  }

  Tree tree;
  WatchedCalls calls;
};

TEST_F(Hint, NoneForAComputerWhoseSensorsAreShown) {
  addChip(tree, 0, "coretemp", "platform/coretemp.0",
          {{"temp1", "51000", "Package id 0"}, {"in0", "900"}});
  EXPECT_EQ(hint(), "");
}

TEST_F(Hint, ComputerWithoutAnythingHasNoSensorsAndNoDrives) { EXPECT_EQ(hint(), kNothing); }

TEST_F(Hint, DrivesWithoutChipsMayBeAVirtualMachine) {
  addDrive(tree, "vda", "pci0000:00/virtio1/block", 10);
  EXPECT_EQ(hint(), kNoSensors);
}

TEST_F(Hint, SensorsThatTheUserMayNotRead) {
  addChip(tree, 0, "coretemp", "platform/coretemp.0",
          {{"temp1", "51000", "Package id 0"}, {"temp2", "41000", "Core 0"}});
  calls.openFails = failingOn("temp2_input", EACCES);
  EXPECT_EQ(hint(), "sensors that this user may not read: 1 (see --list)");
  calls.openFails = failingOn("_input", EACCES);
  EXPECT_EQ(hint(), "sensors that this user may not read: 2 (see --list)");
}

TEST_F(Hint, SensorsThatCannotBeRead) {
  addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  calls.readFails = failingOn("temp1_input", EIO);
  EXPECT_EQ(hint(), noneOf(1));
}

TEST_F(Hint, SensorsWithoutARealValue) {
  addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
  addChip(tree, 0, "nct6798", "platform/nct6775.656",
          {{"temp1", "-62000", "CPUTIN"}, {"temp2", "127000", "SYSTIN"}});
  EXPECT_EQ(hint(), noneOf(2));
}

TEST_F(Hint, SensorsOfADeviceThatIsAsleep) {
  addChip(tree, 0, "amdgpu", "pci0000:00/0000:03:00.0", {{"temp1", "44000", "edge"}});
  tree.write("sys/devices/pci0000:00/0000:03:00.0/power/runtime_status", "suspended\n");
  EXPECT_EQ(hint(), noneOf(1));
}

TEST_F(Hint, SensorThatIsReadOnlyOnRequest) {
  addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
  addChip(tree, 0, "drivetemp", "pci0000:00/ata1", {{"temp1", "31000"}});
  EXPECT_EQ(hint(), noneOf(1)) << "it has no key";
}

TEST_F(Hint, VoltagesAlone) {
  addChip(tree, 0, "a_new_chip", "platform/a", {{"in0", "900"}, {"power1", "7"}});
  EXPECT_EQ(hint(), kOtherSensors);
  addDrive(tree, "sda", "pci0000:00/ata1/block", 10);
  EXPECT_EQ(hint(), kOtherSensors);
}

TEST(HintOfAKeyList, KeysAreSensors) {
  class Keys : public TestMachine {
   public:
    SensorInventory inventory() override {
      SensorInventory listed(1);
      listed[0].key = "TC0P";
      return listed;
    }
  };
  EXPECT_EQ(chooseMachine(Options(), std::make_unique<Keys>()).hint, noneOf(1));
}

}  // namespace
}  // namespace halvermonte::test
