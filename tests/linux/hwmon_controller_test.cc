// The keys and names of a Mac's own controller, beside those of the kernel's other sensors.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Key;
using ::testing::Not;
using ::testing::Pair;

const std::vector<ChannelFiles> kProcessor = {
    {"temp1", "51000", "Package id 0"}, {"temp2", "48000", "Core 0"}, {"temp3", "49000", "Core 1"}};

/// The temperature of a key in a computer's first pass.
double read(const Tree& tree, const std::string& key) {
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  return temperature(machine, key);
}

TEST(HwmonController, IntelMacsLabelsAreItsKeys) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "32000", "TA0P"},
              {"temp2", "-127000", "TW0P"},
              {"temp3", "-49750", "TC0E"},
              {"temp4", "33750", "TH0A"},
              {"temp5", "47000", "TP0P"},
              {"temp6", "20000", "none"},
              {"temp7", "21000", "TOOLONG"},
              {"temp8", "22000", "A CD"}});
  EXPECT_EQ(read(tree, "TA0P"), 32);
  EXPECT_EQ(read(tree, "TW0P"), -1);
  EXPECT_EQ(read(tree, "TC0E"), -1);
  EXPECT_EQ(read(tree, "TH0A"), 33.75);
  EXPECT_EQ(read(tree, "TP0P"), 47) << "although no pass reads it";
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("Airflow 1", 32), Pair("PCH Proximity", 47), Pair("SMC TH0A", 33),
                          Pair("SMC none", 20), Pair("SMC temp7", 21), Pair("SMC temp8", 22)));
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_EQ(listed(machine, "applesmc", "temp4_input").key, "TH0A");
  EXPECT_NE(listed(machine, "applesmc", "temp5_input").key, "TP0P") << "it would have no name";
}

TEST(HwmonController, MacsCoresComeFromTheProcessorIfItHasThem) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "52000", "TC0C"}, {"temp2", "53000", "TC1C"}, {"temp3", "54000", "TC3C"}});
  addChip(tree, 2, "coretemp", "platform/coretemp.1", {{"temp1", "-1", "Package id 1"}});
  addChip(tree, 3, "newchip", "platform/newchip", {{"temp1", "-1", "Core 0"}});
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("CPU Core 1", 53), Pair("CPU Core 3", 54), Pair("SMC TC0C", 52)));
  addChip(tree, 1, "coretemp", "platform/coretemp.0", kProcessor);
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("CPU 1 Package", 51), Pair("CPU Core 1", 48), Pair("CPU Core 2", 49),
                          Pair("SMC TC0C", 52), Pair("SMC TC1C", 53), Pair("SMC TC3C", 54)));
}

TEST(HwmonController, BuiltInNameIsTheControllersIfBothHaveIt) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768", {{"temp1", "55000", "TC0D"}});
  addChip(tree, 1, "coretemp", "platform/coretemp.0", {{"temp1", "51000", "Package id 0"}});
  addChip(tree, 2, "nouveau", "pci0000:00/0000:00:01.0", {{"temp1", "-1"}});
  EXPECT_EQ(read(tree, "TC0D"), 55);
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("CPU 1 Package", 55), Pair("CPU 1 Package (coretemp.0)", 51)));
}

TEST(HwmonController, TwoKeysOfOneBuiltInNameAreShownBoth) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "45000", "TG0D"}, {"temp2", "55000", "TG1D"}, {"temp3", "65000", "TG2D"}});
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("GPU Die", 45), Pair("SMC TG1D", 55), Pair("SMC TG2D", 65)));
}

TEST(HwmonController, DriveIsShownAlthoughTheControllerHasAKeyForOneThatItNeverReads) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "-127000", "TH0a"}, {"temp2", "-127000", "TH0P"}});
  addChip(tree, 1, "nvme", "pci0000:00/0000:00:1b.0/0000:02:00.0/nvme/nvme0",
          {{"temp1", "36000", "Composite"}});
  tree.write("sys/devices/pci0000:00/0000:00:1b.0/0000:02:00.0/nvme/nvme0/model", "APPLE SSD\n");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("APPLE SSD", 36)));
}

TEST(HwmonController, UnknownKeysBelowTenDegreesAreFlagsAndMargins) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "2000", "TC0J"}, {"temp2", "9000", "TA0P"}, {"temp3", "10000", "TC0c"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("Airflow 1", 9), Pair("SMC TC0c", 10)));
  Tree silicon;
  addChip(silicon, 0, "macsmc_hwmon", "platform/macsmc-hwmon", {{"temp1", "9000"}});
  EXPECT_THAT(shown(silicon), ElementsAre(Pair("SMC temp1", 9))) << "on Intel Macs only";
}

TEST(HwmonController, AppleSiliconsKeysAreInItsDeviceTree) {
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
  EXPECT_THAT(shown(tree), ElementsAre(Pair("A Label That Is Cut After Thirt", 30),
                                       Pair("Airport Proximity", 33), Pair("Battery TS_MAX", 29),
                                       Pair("NAND Flash", 31), Pair("SMC Tp0X", 36)));
  addDeviceTreeSensor(tree, "temperature-Tp0b", "");
  EXPECT_EQ(read(tree, "Tp0X"), -1) << "it may be either of the two";
  EXPECT_EQ(shown(tree).at("SMC temp5"), 36);
}

TEST(HwmonController, AppleSiliconsControllerIsOnABusOfTheSystemOnAChip) {
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

TEST(HwmonController, AmbiguousLabelInTheDeviceTreeGivesNoKey) {
  Tree tree;
  addChip(
      tree, 0, "macsmc_hwmon", "platform/soc/23e400000.smc/macsmc-hwmon",
      {{"temp1", "31000", "One channel"}, {"temp2", "32000", "Two"}, {"temp3", "33000", "Two"}});
  addDeviceTreeSensor(tree, "temperature-TB0T", "One channel");
  addDeviceTreeSensor(tree, "temperature-TB1T", "One channel");
  addDeviceTreeSensor(tree, "temperature-TB2T", "Two");
  for (const char* key : {"TB0T", "TB1T", "TB2T"}) EXPECT_EQ(read(tree, key), -1) << key;
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("One channel", 31), Pair("Two 1", 32), Pair("Two 2", 33)));
}

TEST(HwmonController, KeysOfOtherQuantitiesMayBeAskedFor) {
  Tree tree;
  addChip(tree, 0, "macsmc_hwmon", "platform/soc/23e400000.smc/macsmc-hwmon",
          {{"power1", "3214843", "Total System Power"}});
  addDeviceTreeSensor(tree, "power-PSTR", "Total System Power");
  EXPECT_FLOAT_EQ(static_cast<float>(read(tree, "PSTR")), 3.214843F);
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_TRUE(machine.sensorNames().empty()) << "but are no temperatures to show";
}

TEST(HwmonController, OtherKeysOfAMacKeepTheirNamesBesideTheProcessorsCores) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "32000", "TA0P"}, {"temp2", "33000", "TG0D"}});
  addChip(tree, 1, "coretemp", "platform/coretemp.0", kProcessor);
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("Airflow 1", 32), Pair("CPU 1 Package", 51), Pair("CPU Core 1", 48),
                          Pair("CPU Core 2", 49), Pair("GPU Die", 33)));
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_TRUE(machine.sensorNames().empty()) << "the catalogue has them all";
}

TEST(HwmonController, KeyBelongsToOneSensor) {
  Tree tree;
  addOldChip(tree, 0, "applesmc", "platform/applesmc.768",
             {{"temp1", "32000", "TC0c"}, {"temp2", "33000", "TC0c"}});
  EXPECT_THAT(shown(tree), ElementsAre(Pair("SMC TC0c 1", 32), Pair("SMC TC0c 2", 33)));
  Tree other;
  addChip(other, 0, "macsmc_hwmon", "platform/soc/23e400000.smc/macsmc-hwmon",
          {{"temp1", "31000", "One"}, {"power1", "7000000", "Two"}});
  addDeviceTreeSensor(other, "temperature-TH0x", "One");
  addDeviceTreeSensor(other, "power-TH0x", "Two");
  LinuxMachine machine(other.roots(), {}, HeldClock::calls());
  EXPECT_EQ(listed(machine, "macsmc_hwmon", "temp1_input").key, "TH0x");
  EXPECT_EQ(listed(machine, "macsmc_hwmon", "power1_input").key, "");
}

}  // namespace
}  // namespace halvermonte::test
