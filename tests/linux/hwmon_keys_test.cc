// Which sensor each key reads.
#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"

namespace halvermonte::test {
namespace {

/// The temperature of a key in a computer's first pass.
double read(const Tree& tree, const std::string& key, LinuxOptions options = {}) {
  LinuxMachine machine(tree.roots(), options);
  return temperature(machine, key);
}

std::string reasonOf(const Tree& tree, const std::string& driver, const std::string& file) {
  LinuxMachine machine(tree.roots());
  const SensorListing sensor = listed(machine, driver, file);
  EXPECT_EQ(sensor.key, "");
  return sensor.reason;
}

std::vector<ChannelFiles> coresFrom(int firstCore, int count, int firstDegree) {
  std::vector<ChannelFiles> channels;
  for (int i = 0; i < count; ++i) {
    const int core = firstCore + i;
    channels.push_back({"temp" + std::to_string(core + 2), std::to_string((firstDegree + i) * 1000),
                        "Core " + std::to_string(core)});
  }
  return channels;
}

TEST(HwmonKeys, IntelPackageAndCoresHaveKeys) {
  Tree tree;
  std::vector<ChannelFiles> channels = coresFrom(0, 4, 41);
  channels.push_back({"temp1", "51000", "Package id 0"});
  addChip(tree, 3, "coretemp", "platform/coretemp.0", channels);
  EXPECT_EQ(read(tree, "TC0D"), 51);
  EXPECT_EQ(read(tree, "TC1C"), 41);
  EXPECT_EQ(read(tree, "TC4C"), 44);
  EXPECT_EQ(read(tree, "TC5C"), -1);
}

TEST(HwmonKeys, CoresOfTwoIntelPackagesShareTheKeys) {
  Tree tree;
  std::vector<ChannelFiles> second = coresFrom(0, 6, 61);
  second.push_back({"temp1", "72000", "Package id 1"});
  addChip(tree, 0, "coretemp", "platform/coretemp.1", second);
  std::vector<ChannelFiles> first = coresFrom(0, 6, 41);
  first.push_back({"temp1", "52000", "Physical id 0"});
  addChip(tree, 1, "coretemp", "platform/coretemp.0", first);
  EXPECT_EQ(read(tree, "TC0D"), 52);
  EXPECT_EQ(read(tree, "TC1D"), 72);
  EXPECT_EQ(read(tree, "TC6C"), 46);
  EXPECT_EQ(read(tree, "TC7C"), 61);
  EXPECT_EQ(read(tree, "TC8C"), 62);
  LinuxMachine machine(tree.roots());
  size_t unnamed = 0;
  for (const SensorListing& sensor : machine.inventory()) {
    if (sensor.reason == "the catalogue has no more names for its kind") ++unnamed;
  }
  EXPECT_EQ(unnamed, 4u);
}

TEST(HwmonKeys, CoresKeepTheirOrderIfTheirNumbersHaveGaps) {
  Tree tree;
  std::vector<ChannelFiles> channels = {{"temp2", "41000", "Core 0"},
                                        {"temp6", "42000", "Core 4"},
                                        {"temp30", "43000", "Core 28"},
                                        {"temp10", "44000", "Core 8"}};
  addChip(tree, 0, "coretemp", "platform/coretemp.0", channels);
  EXPECT_EQ(read(tree, "TC1C"), 41);
  EXPECT_EQ(read(tree, "TC2C"), 42);
  EXPECT_EQ(read(tree, "TC3C"), 44);
  EXPECT_EQ(read(tree, "TC4C"), 43);
}

TEST(HwmonKeys, AmdDieIsPreferredToItsControlValue) {
  Tree tree;
  addChip(tree, 0, "k10temp", "pci0000:00/0000:00:18.3",
          {{"temp1", "77000", "Tctl"},
           {"temp2", "50000", "Tdie"},
           {"temp3", "48250", "Tccd1"},
           {"temp4", "49250", "Tccd2"},
           {"temp5", "47250", "Tccd3"}});
  EXPECT_EQ(read(tree, "TC0D"), 50);
  EXPECT_EQ(read(tree, "TC1D"), -1);
  EXPECT_EQ(read(tree, "TC0E"), 48.25);
  EXPECT_EQ(read(tree, "TC0F"), 49.25);
  EXPECT_EQ(reasonOf(tree, "k10temp", "temp1_input"), "Tdie is shown instead");
  EXPECT_EQ(reasonOf(tree, "k10temp", "temp5_input"), "the catalogue has no name for it");
}

TEST(HwmonKeys, AmdControlValueIsUsedIfThereIsNoDie) {
  Tree labelled;
  addChip(labelled, 0, "k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "45125", "Tctl"}});
  EXPECT_EQ(read(labelled, "TC0D"), 45.125);
  Tree old;
  addChip(old, 0, "k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "46000"}});
  EXPECT_EQ(read(old, "TC0D"), 46);
  Tree other;
  addChip(other, 0, "zenpower", "pci0000:00/0000:00:18.3",
          {{"temp1", "47000", "Tdie"}, {"temp2", "47000", "Tctl"}, {"temp3", "40000", "Tccd1"}});
  EXPECT_EQ(read(other, "TC0D"), 47);
  EXPECT_EQ(read(other, "TC0E"), 40);
}

TEST(HwmonKeys, TwoAmdChipsShareAKeyIfTheyAreInOnePackage) {
  Tree tree;
  addChip(tree, 0, "k10temp", "pci0000:00/0000:00:19.3",
          {{"temp1", "55000", "Tctl"}, {"temp4", "54000", "Tccd2"}});
  addChip(tree, 1, "k10temp", "pci0000:00/0000:00:18.3", {{"temp1", "45000", "Tctl"}});
  addProcessorOfPackage(tree, 0, 0);
  addProcessorOfPackage(tree, 1, 1);
  EXPECT_EQ(read(tree, "TC0D"), 45);
  EXPECT_EQ(read(tree, "TC1D"), 55);
  EXPECT_EQ(read(tree, "TC1F"), 54);
  addProcessorOfPackage(tree, 1, 0);
  EXPECT_EQ(read(tree, "TC0D"), 45);
  EXPECT_EQ(read(tree, "TC1D"), -1) << "both are in one package";
}

TEST(HwmonKeys, BoardWithoutACoreSensorShowsItsThermalZones) {
  Tree tree;
  addChip(tree, 0, "cpu_thermal", "virtual/thermal/thermal_zone0", {{"temp1", "48312"}});
  addChip(tree, 1, "gpu_thermal", "virtual/thermal/thermal_zone1", {{"temp1", "47500"}});
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TC0D")), 48.312F);
  EXPECT_EQ(read(tree, "TG0D"), 47.5);
}

TEST(HwmonKeys, GraphicsEdgeIsTheDieIfThereIsNoJunction) {
  Tree tree;
  addChip(tree, 0, "amdgpu", "pci0000:00/0000:03:00.0", {{"temp1", "44000", "edge"}});
  EXPECT_EQ(read(tree, "TG0D"), 44);
  Tree discrete;
  addChip(discrete, 0, "amdgpu", "pci0000:00/0000:03:00.0",
          {{"temp1", "44000", "edge"}, {"temp2", "61000", "junction"}, {"temp3", "70000", "mem"}});
  EXPECT_EQ(read(discrete, "TG0D"), 61);
  EXPECT_EQ(read(discrete, "TG0P"), 44);
  EXPECT_EQ(reasonOf(discrete, "amdgpu", "temp3_input"), "the catalogue has no name for it");
  Tree other;
  addChip(other, 0, "nouveau", "pci0000:00/0000:01:00.0", {{"temp1", "39000"}});
  EXPECT_EQ(read(other, "TG0D"), 39);
}

TEST(HwmonKeys, SixteenMemoryModulesHaveKeys) {
  Tree tree;
  for (int i = 0; i < 17; ++i) {
    const std::string bus = std::to_string(i / 8);
    const std::string place = "0018 0019 001a 001b 001c 001d 001e 001f";
    addChip(
        tree, 40 - i, i % 2 == 0 ? "jc42" : "jc42",
        "pci0000:00/i2c-" + bus + "/" + bus + "-" + place.substr(static_cast<size_t>(i % 8) * 5, 4),
        {{"temp1", std::to_string(30000 + i * 1000)}});
  }
  EXPECT_EQ(read(tree, "TM0P"), 30);
  EXPECT_EQ(read(tree, "TM1P"), 31);
  EXPECT_EQ(read(tree, "TM8P"), 32);
  EXPECT_EQ(read(tree, "TM9S"), 37);
  EXPECT_EQ(read(tree, "Tm01"), 38);
  EXPECT_EQ(read(tree, "Tm0X"), 45);
  LinuxMachine machine(tree.roots());
  EXPECT_EQ(machine.inventory().back().reason, "the catalogue has no more names for its kind");
}

TEST(HwmonKeys, NewerMemoryModulesHaveTheSameKeys) {
  Tree tree;
  addChip(tree, 0, "spd5118", "pci0000:00/i2c-1/1-0050", {{"temp1", "38250"}});
  addChip(tree, 1, "spd5118", "pci0000:00/i2c-1/1-0052", {{"temp1", "38750"}});
  EXPECT_EQ(read(tree, "TM0P"), 38.25);
  EXPECT_EQ(read(tree, "TM1P"), 38.75);
}

TEST(HwmonKeys, NvmeAndOtherDrivesShareTheKeys) {
  Tree tree;
  for (int i = 0; i < 3; ++i) {
    const std::string address = "0000:0" + std::to_string(i + 1) + ":00.0";
    addChip(
        tree, i, "nvme", "pci0000:00/" + address + "/nvme/nvme" + std::to_string(2 - i),
        {{"temp1", std::to_string(31850 + i * 1000), "Composite"}, {"temp2", "50850", "Sensor 1"}});
  }
  addChip(tree, 7, "drivetemp", "pci0000:00/0000:00:17.0/ata1/host0/target0:0:0/0:0:0:0",
          {{"temp1", "29000"}});
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TH0a")), 31.85F);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TH0P")), 32.85F);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TH1P")), 33.85F);
  EXPECT_EQ(read(tree, "TH2P"), -1);
  EXPECT_EQ(read(tree, "TH2P", {.driveTemperatures = true}), 29);
  EXPECT_EQ(reasonOf(tree, "drivetemp", "temp1_input"), "read only on request");
  EXPECT_EQ(reasonOf(tree, "nvme", "temp2_input"), "the catalogue has no name for it");
}

TEST(HwmonKeys, RadioChipsetBatteryAndFirmwareZonesHaveKeys) {
  Tree tree;
  addChip(tree, 0, "iwlwifi_1", "virtual/thermal/thermal_zone5", {{"temp1", "47000"}});
  addChip(tree, 1, "pch_cannonlake", "virtual/thermal/thermal_zone3", {{"temp1", "53000"}});
  addChip(tree, 2, "BAT0", "LNXSYSTM:00/PNP0C0A:00/power_supply/BAT0",
          {{"temp1", "30100", "temp"}, {"temp2", "20000", "ambient temp"}, {"in0", "12000"}});
  addChip(tree, 3, "acpitz", "virtual/thermal/thermal_zone0",
          {{"temp1", "27800"}, {"temp2", "29800"}, {"temp3", "20000"}});
  EXPECT_EQ(read(tree, "TW0P"), 47);
  EXPECT_EQ(read(tree, "TP0D"), 53);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TB1T")), 30.1F);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TA0P")), 27.8F);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TA1P")), 29.8F);
  EXPECT_EQ(reasonOf(tree, "BAT0", "in0_input"), "only temperatures and fans are shown");
  for (const char* driver : {"ath11k_hwmon", "mt7921_phy0"}) {
    Tree other;
    addChip(other, 0, driver, "pci0000:00/0000:72:00.0", {{"temp1", "49000"}});
    EXPECT_EQ(read(other, "TW0P"), 49) << driver;
  }
}

TEST(HwmonKeys, BoardSensorsAreKnownByTheirLabels) {
  Tree tree;
  addChip(tree, 0, "nct6798", "platform/nct6775.656",
          {{"temp1", "33000", "SYSTIN"},
           {"temp2", "41500", "CPUTIN"},
           {"temp3", "-62000", "AUXTIN0"},
           {"temp7", "52000", "PECI Agent 0 Calibration"},
           {"temp8", "0", "PCH_CHIP_TEMP"}});
  addChip(tree, 1, "asusec", "platform/asus-ec-sensors",
          {{"temp1", "61000", "Chipset"},
           {"temp2", "42000", "CPU"},
           {"temp3", "34000", "Motherboard"},
           {"temp4", "-40000", "T_Sensor"},
           {"temp5", "43000", "CPU Package"}});
  EXPECT_EQ(read(tree, "TC0P"), 42);
  EXPECT_EQ(read(tree, "TCAD"), 43);
  EXPECT_EQ(read(tree, "TCXC"), 52);
  EXPECT_EQ(read(tree, "TP0D"), 61);
  EXPECT_EQ(read(tree, "TA0P"), 33);
  EXPECT_EQ(read(tree, "TA1P"), 34);
}

TEST(HwmonKeys, LaptopSensorsWithoutLabelsHaveNoKeys) {
  Tree tree;
  addChip(tree, 0, "dell_smm", "platform/dell_smm_hwmon", {{"temp1", "52000"}, {"temp2", "42000"}});
  EXPECT_EQ(reasonOf(tree, "dell_smm", "temp1_input"), "the catalogue has no name for it");
  Tree labelled;
  addChip(labelled, 0, "dell_smm", "platform/dell_smm_hwmon",
          {{"temp1", "52000", "CPU"},
           {"temp2", "42000", "SODIMM"},
           {"temp3", "35000", "Ambient"},
           {"temp4", "50000", "GPU"},
           {"temp5", "51000", "Other"}});
  EXPECT_EQ(read(labelled, "TC0P"), 52);
  EXPECT_EQ(read(labelled, "Ts0S"), 42);
  EXPECT_EQ(read(labelled, "TA0P"), 35);
  EXPECT_EQ(read(labelled, "TG0P"), 50);
  Tree other;
  addChip(other, 0, "thinkpad", "platform/thinkpad_hwmon",
          {{"temp1", "50000", "CPU"}, {"temp2", "0", "GPU"}, {"temp3", "40000"}});
  EXPECT_EQ(read(other, "TC0P"), 50);
  EXPECT_EQ(read(other, "TG0P"), -1);
}

TEST(HwmonKeys, IntelMacsLabelsAreItsKeys) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "32000", "TA0P"},
              {"temp2", "50000", "TC1C"},
              {"temp3", "-127000", "TW0P"},
              {"temp4", "-49750", "TC0E"},
              {"temp5", "33750", "TH0A"},
              {"temp6", "20000", "none"},
              {"temp7", "20000", "TOOLONG"}});
  addChip(tree, 1, "coretemp", "platform/coretemp.0",
          {{"temp1", "51000", "Package id 0"},
           {"temp2", "48000", "Core 0"},
           {"temp3", "49000", "Core 1"}});
  EXPECT_EQ(read(tree, "TA0P"), 32);
  EXPECT_EQ(read(tree, "TC1C"), 50) << "the controller's own reading, not the processor's";
  EXPECT_EQ(read(tree, "TC2C"), 49);
  EXPECT_EQ(read(tree, "TC0D"), 51);
  EXPECT_EQ(read(tree, "TW0P"), -1);
  EXPECT_EQ(read(tree, "TC0E"), -1);
  EXPECT_EQ(read(tree, "TH0A"), 33.75);
  EXPECT_EQ(reasonOf(tree, "coretemp", "temp2_input"), "the controller has TC1C itself");
  EXPECT_EQ(reasonOf(tree, "applesmc", "temp7_input"), "its label is not a key");
}

TEST(HwmonKeys, AppleSiliconsKeysAreInItsDeviceTree) {
  Tree tree;
  addChip(tree, 0, "macsmc_hwmon", "platform/soc/23e400000.smc/macsmc-hwmon",
          {{"temp1", "31093", "NAND Flash Temperature"},
           {"temp2", "29500", "Battery Hotspot"},
           {"temp3", "33296", "WiFi/BT Module Temp"},
           {"temp4", "30000", "A Label That Is Cut After Thirt"},
           {"temp5", "36500"},
           {"power1", "3214843", "Total System Power"},
           {"fan1", "1200", "Fan 1"}});
  addDeviceTreeSensor(tree, "temperature-TW0P", "WiFi/BT Module Temp");
  addDeviceTreeSensor(tree, "temperature-TB0T", "Battery Hotspot");
  addDeviceTreeSensor(tree, "temperature-TH0x", "NAND Flash Temperature");
  addDeviceTreeSensor(tree, "temperature-TCHP", "A Label That Is Cut After Thirty-One");
  addDeviceTreeSensor(tree, "temperature-Tp0X", "");
  addDeviceTreeSensor(tree, "power-PSTR", "Total System Power");
  addDeviceTreeSensor(tree, "fan-F0Ac", "Fan 1");
  EXPECT_EQ(read(tree, "TB0T"), 29.5);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TW0P")), 33.296F);
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "TH0x")), 31.093F);
  EXPECT_EQ(read(tree, "TCHP"), 30);
  EXPECT_EQ(read(tree, "Tp0X"), 36.5)
      << "the only channel without a label, and the only sensor without one";
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "PSTR")), 3.214843F);
  addDeviceTreeSensor(tree, "temperature-Tp0b", "");
  EXPECT_EQ(read(tree, "Tp0X"), -1) << "it may be either of the two";
  EXPECT_EQ(reasonOf(tree, "macsmc_hwmon", "temp5_input"), "the device tree has no key for it");
}

TEST(HwmonKeys, AppleSiliconsControllerIsOnABusOfTheSystemOnAChip) {
  const std::string sensor = "/hwmon/temperature-TB0T/apple,key-id";
  const std::string key("TB0T\0", 5);
  // The battery's reading on a computer whose controller has this node, among others.
  const auto battery = [&](const std::string& controller) {
    Tree tree;
    addChip(tree, 0, "macsmc_hwmon", "platform/macsmc-hwmon", {{"temp1", "29500"}});
    const std::string base = "sys/firmware/devicetree/base/";
    for (const char* other : {"aliases", "soc/aic@23b100000", "soc/wdt@23d2b0000", "timer"}) {
      tree.write(base + other + "/compatible", "other");
    }
    tree.write(base + controller + sensor, key);
    return read(tree, "TB0T");
  };
  EXPECT_EQ(battery("soc/smc@23e400000"), 29.5);
  EXPECT_EQ(battery("soc@200000000/smc@28e400000"), 29.5);
  EXPECT_EQ(battery("reserved-memory/smc@23e400000"), -1);
  EXPECT_EQ(battery("old-soc/smc@23e400000"), -1);
  EXPECT_EQ(battery("soc/smc"), -1);
  EXPECT_EQ(battery("soc/old-smc@23e400000"), -1);
}

TEST(HwmonKeys, AmbiguousLabelInTheDeviceTreeGivesNoKey) {
  Tree tree;
  addChip(
      tree, 0, "macsmc_hwmon", "platform/soc/23e400000.smc/macsmc-hwmon",
      {{"temp1", "31000", "One channel"}, {"temp2", "32000", "Two"}, {"temp3", "33000", "Two"}});
  addDeviceTreeSensor(tree, "temperature-TB0T", "One channel");
  addDeviceTreeSensor(tree, "temperature-TB1T", "One channel");
  addDeviceTreeSensor(tree, "temperature-TB2T", "Two");
  for (const char* file : {"temp1_input", "temp2_input", "temp3_input"}) {
    EXPECT_EQ(reasonOf(tree, "macsmc_hwmon", file), "the device tree has no key for it");
  }
}

TEST(HwmonKeys, NumbersOfTheChipsDoNotMatter) {
  const auto layOut = [](Tree& tree, int first, int second, int third) {
    addChip(tree, first, "nvme", "pci0000:00/0000:01:00.0/nvme/nvme0",
            {{"temp1", "31850", "Composite"}});
    addChip(tree, second, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme1",
            {{"temp1", "41850", "Composite"}});
    addChip(tree, third, "coretemp", "platform/coretemp.0", coresFrom(0, 4, 50));
  };
  Tree one;
  Tree other;
  layOut(one, 0, 1, 2);
  layOut(other, 10, 7, 3);
  LinuxMachine oneMachine(one.roots());
  LinuxMachine otherMachine(other.roots());
  const SensorInventory expected = oneMachine.inventory();
  const SensorInventory actual = otherMachine.inventory();
  ASSERT_EQ(actual.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(actual[i].device, expected[i].device);
    EXPECT_EQ(actual[i].file, expected[i].file);
    EXPECT_EQ(actual[i].key, expected[i].key);
    EXPECT_EQ(actual[i].raw, expected[i].raw);
  }
}

}  // namespace
}  // namespace halvermonte::test
