#include <gmock/gmock.h>

#include <cerrno>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

TEST(Inventory, ListsPlaceKeyAndReadingOfEachSensor) {
  Tree tree;
  addChip(tree, 3, "coretemp", "platform/coretemp.0",
          {{"temp1", "51000", "Package id 0"}, {"in0", "900", "VCore"}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  const SensorListing temperature = listed(machine, "coretemp", "temp1_input");
  EXPECT_EQ(temperature.device, "platform/coretemp.0");
  EXPECT_EQ(temperature.label, "Package id 0");
  EXPECT_EQ(temperature.quantity, "temperature");
  EXPECT_EQ(temperature.key, "TC0D");
  EXPECT_EQ(temperature.reason, "");
  EXPECT_EQ(temperature.state, "read");
  EXPECT_EQ(temperature.raw, "51000");
  EXPECT_EQ(temperature.number, 51);
  const SensorListing voltage = listed(machine, "coretemp", "in0_input");
  EXPECT_EQ(voltage.quantity, "voltage");
  EXPECT_EQ(voltage.key, "");
  EXPECT_EQ(voltage.reason, "only temperatures and fans are shown");
  EXPECT_EQ(voltage.raw, "900");
  EXPECT_EQ(voltage.number, 0.9);
}

TEST(Inventory, SaysWhyThereIsNoReading) {
  Tree tree;
  addChip(tree, 0, "coretemp", "platform/coretemp.0",
          {{"temp1", "151000", "Package id 0"},
           {"temp2", "warm", "Core 0"},
           {"temp3", "41000", "Core 1"},
           {"temp4", "41000", "Core 2"},
           {"temp5", "41000", "Core 3"},
           {"temp6", "41000", "Core 4"}});
  tree.write(chipFile(0, "temp3_fault"), "1\n").write(chipFile(0, "temp4_enable"), "0\n");
  WatchedCalls calls;
  calls.openFails = failingOn("temp5_input", EACCES);
  calls.readFails = failingOn("temp6_input", EIO);
  LinuxMachine machine(tree.roots(), {}, calls);
  const auto state = [&](const std::string& file) {
    return listed(machine, "coretemp", file).state;
  };
  EXPECT_EQ(state("temp1_input"), "no reading: outside its range");
  EXPECT_EQ(state("temp2_input"), "no reading: not a number");
  EXPECT_EQ(state("temp3_input"), "no reading: the driver reports a fault");
  EXPECT_EQ(state("temp4_input"), "no reading: switched off");
  EXPECT_EQ(state("temp5_input"), "no reading: Permission denied");
  EXPECT_EQ(state("temp6_input"), "no reading: Input/output error");
}

TEST(Inventory, HasNoTextOfASensorThatIsNotReadNow) {
  Tree tree;
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  tree.write(chipFile(0, "temp1_fault"), "0\n");
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(listed(machine, "coretemp", "temp1_input").raw, "51000");
  tree.write(chipFile(0, "temp1_fault"), "1\n");
  EXPECT_EQ(listed(machine, "coretemp", "temp1_input").raw, "");
  EXPECT_EQ(listed(machine, "coretemp", "temp1_input").number, std::nullopt);
}

TEST(Inventory, ListsEverySensorButReadsDrivesOnlyOnRequest) {
  Tree tree;
  addChip(tree, 0, "drivetemp", "pci0000:00/host0/target0:0:0/0:0:0:0", {{"temp1", "30000"}});
  addChip(
      tree, 1, "a_new_chip", "platform/a",
      {{"power2", "7"}, {"energy1", "8"}, {"humidity1", "9"}, {"curr1", "10"}, {"freq1", "11"}});
  tree.write(chipFile(1, "power1_average"), "6\n");
  tree.write(chipFile(1, "power2_average"), "5\n");
  WatchedCalls calls;
  LinuxMachine machine(tree.roots(), {}, calls);
  EXPECT_EQ(machine.inventory().size(), 7u);
  EXPECT_EQ(listed(machine, "a_new_chip", "power1_average").raw, "6");
  EXPECT_EQ(listed(machine, "a_new_chip", "power2_input").raw, "7");
  EXPECT_EQ(listed(machine, "drivetemp", "temp1_input").state, "not read");
  EXPECT_EQ(calls.opens("hwmon0/temp1_input"), 0u);
  LinuxMachine asking(tree.roots(), {.driveTemperatures = true}, HeldClock::calls());
  EXPECT_EQ(listed(asking, "drivetemp", "temp1_input").raw, "30000");
}

TEST(Inventory, AverageIsReadOnlyWhereThereIsNoInput) {
  Tree tree;
  addChip(tree, 0, "a_new_chip", "platform/a", {{"power1", "7"}, {"temp1", "31000"}});
  for (const char* file : {"power1_average", "temp1_average", "power2_average"}) {
    tree.write(chipFile(0, file), "5\n");
  }
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(machine.inventory().size(), 3u);
  EXPECT_EQ(listed(machine, "a_new_chip", "power1_input").raw, "7");
  EXPECT_EQ(listed(machine, "a_new_chip", "temp1_input").raw, "31000");
  EXPECT_EQ(listed(machine, "a_new_chip", "power2_average").raw, "5");
}

TEST(Inventory, EntryOfAnotherNameThanAChipsIsNotAChip) {
  Tree tree;
  addChip(tree, 7, "a_new_chip", "platform/a", {{"temp1", "31000"}});
  for (const char* name : {"hwmon", "hwmon7a", "hwmon-7", "sensor7", "7"}) {
    tree.link("sys/class/hwmon/" + std::string(name), "sys/class/hwmon/hwmon7");
  }
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(machine.inventory().size(), 1u);
}

TEST(Inventory, LimitsAndSettingsAreNoReadings) {
  Tree tree;
  addChip(tree, 0, "a_new_chip", "platform/a", {{"temp1", "31000"}});
  for (const char* file : {"temp1_crit", "temp1_max", "temp2_crit", "temp2_label", "temp2_max",
                           "fan1_target", "power1_cap", "power1_average_interval"}) {
    tree.write(chipFile(0, file), "5\n");
  }
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(machine.inventory().size(), 1u);
  EXPECT_EQ(listed(machine, "a_new_chip", "temp1_input").raw, "31000");
}

TEST(Inventory, IsInTheOrderOfTheHardware) {
  Tree tree;
  addChip(tree, 0, "nvme", "pci0000:00/0000:00:1d.0/nvme/nvme0", {{"temp1", "31000"}});
  addChip(tree, 1, "later", "platform/chip.2", {{"temp1", "31000"}});
  addChip(tree, 2, "sooner", "platform/chip.2", {{"temp1", "31000"}});
  addChip(tree, 3, "k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "31000"}});
  addChip(tree, 10, "early", "platform/chip.2", {{"temp1", "31000", "second"}});
  addChip(tree, 4, "early", "platform/chip.2", {{"temp1", "31000", "first"}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  std::vector<std::string> drivers;
  for (const SensorListing& each : machine.inventory()) {
    drivers.push_back(each.driver + each.label);
  }
  EXPECT_THAT(drivers, ::testing::ElementsAre("earlyfirst", "earlysecond", "later", "sooner",
                                              "k10temp", "nvme"));
}

TEST(Inventory, LimitOfAProcessorIsListedWhateverItsNumber) {
  Tree tree;
  addChip(tree, 0, "peci_cputemp.cpu0.30", "platform/peci-0/0-30", {{"temp5", "-10000", "Tjmax"}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  const SensorListing limit = listed(machine, "peci_cputemp.cpu0.30", "temp5_input");
  EXPECT_EQ(limit.reason, "a limit, not a reading");
  EXPECT_EQ(limit.state, "read");
}

}  // namespace
}  // namespace halvermonte::test
