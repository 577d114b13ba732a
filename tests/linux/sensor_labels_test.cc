// What becomes of the texts of drivers and devices in names and listings.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"

namespace halvermonte::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

const ComputerOptions kWithDrives{.driveTemperatures = true};

/// The name of a computer's only temperature.
std::string nameIn(const Tree& tree) {
  const auto sensors = shown(tree, kWithDrives);
  EXPECT_EQ(sensors.size(), 1u);
  return sensors.empty() ? "" : sensors.begin()->first;
}

std::string nameOf(const std::string& driver, const std::string& label) {
  Tree tree;
  addChip(tree, 0, driver, "platform/chip", {{"temp1", "31000", label}});
  return nameIn(tree);
}

TEST(SensorLabels, AreWrittenAsPeopleWriteThem) {
  EXPECT_EQ(nameOf("newchip", "T_Sensor"), "newchip T Sensor");
  EXPECT_EQ(nameOf("newchip", "cpu@4c"), "newchip CPU@4c");
  EXPECT_EQ(nameOf("newchip", "  vrm   mos "), "newchip VRM mos");
  EXPECT_EQ(nameOf("newchip", "temp3 inlet"), "newchip Inlet");
  EXPECT_EQ(nameOf("newchip", "temp3"), "newchip Sensor 1");
  EXPECT_EQ(nameOf("newchip", "7"), "newchip Sensor 1");
  EXPECT_EQ(nameOf("newchip", "_ temp3 inlet"), "newchip Inlet");
}

TEST(SensorLabels, LoseOnlyAWholeWordForTemperature) {
  EXPECT_EQ(nameOf("newchip", "PCH Thermal Index"), "newchip PCH");
  EXPECT_EQ(nameOf("newchip", "intake_temp  "), "newchip Intake");
  EXPECT_EQ(nameOf("newchip", "Subtemp"), "newchip Subtemp");
  EXPECT_EQ(nameOf("newchip", "Temp"), "newchip Temp");
}

TEST(SensorLabels, OfZonesAreTheirDrivers) {
  EXPECT_EQ(nameOf("soc0_thermal", ""), "SoC0");
  EXPECT_EQ(nameOf("cpu_big_thermal", ""), "CPU big");
  EXPECT_EQ(nameOf("_thermal", ""), "Thermal");
}

TEST(SensorLabels, OfZonesWithoutANumberHaveThatOfTheChannel) {
  Tree tree;
  addChip(tree, 0, "acpitz", "virtual/thermal/thermal_zone0",
          {{"temp2", "31000"}, {"temp5", "32000"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("ACPI Zone 2", 31), Pair("ACPI Zone 5", 32)));
}

TEST(SensorLabels, OfAChipThatHasNoNameAreTheName) { EXPECT_EQ(nameOf("", "inlet"), "Inlet"); }

TEST(SensorLabels, AreOneLineOfPrintableTextInTheList) {
  Tree tree;
  addChip(tree, 0, "newchip", "platform/newchip",
          {{"temp1", "31000", "one\ttab\x01\x7f\xc3"},
           {"temp2", "32000", "two\r\nlines"},
           {"temp3", "33000", std::string("end\0not", 7)},
           {"temp4", "34000", std::string(100, 'x')}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  const auto label = [&](const std::string& file) {
    return listed(machine, "newchip", file).label;
  };
  EXPECT_EQ(label("temp1_input"), "one tab???");
  EXPECT_EQ(label("temp2_input"), "two");
  EXPECT_EQ(label("temp3_input"), "end");
  EXPECT_EQ(label("temp4_input"), std::string(80, 'x'));
}

TEST(SensorLabels, OfFuelGaugesAreTheBattery) {
  EXPECT_EQ(nameOf("max170xx_battery", "temp"), "Battery");
  EXPECT_EQ(nameOf("qcom_battmgr_bat", "ambient temp"), "Battery Ambient");
}

TEST(SensorLabels, OfAsusBoardsNameTheMaker) {
  EXPECT_EQ(nameOf("asus", ""), "ASUS Sensor 1");
  EXPECT_EQ(nameOf("atk0110", "MB Temperature"), "ASUS MB");
}

TEST(SensorLabels, ModelsArePrintable) {
  Tree tree;
  addChip(tree, 0, "nvme", "pci0000:00/0000:00:1d.0/nvme/nvme0", {{"temp1", "31000"}});
  tree.write("sys/devices/pci0000:00/0000:00:1d.0/nvme/nvme0/model", " A\xc3\x01  Model \x7f  \n");
  EXPECT_EQ(nameIn(tree), "A?? Model ?");
  const std::string longest = "A Model That Has All The Forty Characters";
  tree.write("sys/devices/pci0000:00/0000:00:1d.0/nvme/nvme0/model", longest.substr(0, 40) + "\n");
  EXPECT_EQ(nameIn(tree), longest.substr(0, 40));
  tree.write("sys/devices/pci0000:00/0000:00:1d.0/nvme/nvme0/model", longest + "\n");
  EXPECT_EQ(nameIn(tree), "A Model That Has All The Forty");
}

TEST(SensorLabels, DriveMayLackItsVendorOrItsModel) {
  Tree tree;
  const std::string drive = "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0";
  addChip(tree, 0, "drivetemp", drive, {{"temp1", "31000"}});
  tree.write("sys/devices/" + drive + "/vendor", "SEAGATE\n");
  EXPECT_EQ(nameIn(tree), "Drive");
  tree.write("sys/devices/" + drive + "/model", "ST4000NM0023\n");
  EXPECT_EQ(nameIn(tree), "SEAGATE ST4000NM0023");
  tree.write("sys/devices/" + drive + "/vendor", "\n");
  EXPECT_EQ(nameIn(tree), "ST4000NM0023");
}

TEST(SensorLabels, CardBehindABridgeIsNotIntegratedGraphics) {
  Tree tree;
  addChip(tree, 0, "nouveau", "pci0000:00/0000:00:02.0/0000:03:00.0", {{"temp1", "31000"}});
  EXPECT_EQ(nameIn(tree), "GPU Die");
  Tree other;
  addChip(other, 0, "amdgpu", "pci0000:00/0000:00:03.0", {{"temp1", "31000", "edge"}});
  other.write("sys/devices/pci0000:00/0000:00:04.0/class", "0x108000\n");
  EXPECT_EQ(nameIn(other), "GPU Die") << "the security processor is in another slot";
}

TEST(SensorLabels, ChipOfANetworkInterfaceIsCalledByItsKind) {
  const std::string device = "pci0000:00/0000:00:1c.0/0000:02:00.0";
  Tree tree;
  addChip(tree, 0, "lan0", device + "/net/lan0", {{"temp1", "31000", "MAC Temperature"}});
  EXPECT_EQ(nameIn(tree), "Ethernet MAC");
  Tree other;
  addChip(other, 0, "lan0", device, {{"temp1", "31000", "MAC Temperature"}});
  other.folder("sys/devices/" + device + "/net/lan0");
  EXPECT_EQ(nameIn(other), "Ethernet MAC");
}

TEST(SensorLabels, MemoryModuleIsNumberedOnItsOwnBus) {
  Tree tree;
  const std::string smbus = "pci0000:00/0000:00:1f.4/i2c-3";
  tree.folder("sys/devices/" + smbus + "/i2c-5");
  addChip(tree, 0, "spd5118", smbus + "/i2c-6/6-0053", {{"temp1", "31000"}});
  EXPECT_EQ(nameIn(tree), "Memory 2 Module 4");
  Tree other;
  addChip(other, 0, "spd5118", "m", {{"temp1", "31000"}});
  EXPECT_EQ(nameIn(other), "Memory Module");
}

}  // namespace
}  // namespace halvermonte::test
