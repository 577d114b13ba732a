// Keys and names stay when the kernel counts its devices in another order, and when hardware comes
// or goes.
#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Key;
using ::testing::Pair;

const ComputerOptions kWithDrives{.driveTemperatures = true};

/// The numbers that a kernel gives at one boot.
struct Numbers {
  int chip = 0;  ///< the first one's, the others follow
  int step = 1;  ///< from chip to chip
  std::string bus = "03", otherBus = "04";
  int nvme = 0, ata = 1, i2c = 0, zone = 0, usb = 1;
};

std::string text(int number) { return std::to_string(number); }

/// A computer with a chip of each kind that is counted.
class Computer {
 public:
  explicit Computer(const Numbers& numbers) : numbers_(numbers), chip_(numbers.chip) {
    const std::string port = "pci0000:00/0000:00:01.1/0000:" + numbers.bus;
    add("coretemp", "platform/coretemp.0",
        {{"temp1", "40000", "Package id 0"}, {"temp2", "41000", "Core 0"}});
    addDrive(port + ":00.0/0000:" + numbers.otherBus + ":01.0", numbers.nvme, 42000);
    addDrive("pci0000:00/0000:00:1d.0/0000:0a:00.0", numbers.nvme + 1, 43000);
    addSATA(numbers.ata, 1, 44000);
    addSATA(numbers.ata + 1, 2, 45000);
    const std::string smbus = "pci0000:00/0000:00:1f.4/i2c-";
    tree_.folder("sys/devices/" + smbus + text(numbers.i2c));
    for (const int address : {18, 19}) {
      const std::string bus = text(numbers.i2c + 2);
      add("jc42", smbus + bus + "/" + bus + "-00" + text(address),
          {{"temp1", text(28000 + address * 1000)}});
    }
    add("acpitz", "virtual/thermal/thermal_zone" + text(numbers.zone), {{"temp1", "48000"}});
    add("iwlwifi_" + text(numbers.zone), "virtual/thermal/thermal_zone" + text(numbers.zone + 7),
        {{"temp1", "49000"}});
    const std::string usb = text(numbers.usb);
    add("corsairpsu",
        "pci0000:00/0000:00:14.0/usb" + usb + "/" + usb + "-4/" + usb + "-4.2/" + usb +
            "-4.2:1.0/0003:1B1C:1C0C.000" + usb,
        {{"temp1", "50000", "vrm temp"}, {"temp2", "51000", "case temp"}});
    add("cros_ec", "platform/cros-ec-hwmon." + text(numbers.zone) + ".auto",
        {{"temp1", "52000", "local"}});
  }

  Tree& tree() { return tree_; }
  int chips() const { return (chip_ - numbers_.chip) / numbers_.step; }
  void removeChip(int number) {
    tree_.remove("sys/class/hwmon/hwmon" + text(numbers_.chip + number * numbers_.step));
  }

 private:
  void add(const std::string& driver, const std::string& device,
           const std::vector<ChannelFiles>& channels) {
    addChip(tree_, chip_, driver, device, channels);
    chip_ += numbers_.step;
  }
  void addDrive(const std::string& parent, int number, int reading) {
    const std::string device = parent + "/nvme/nvme" + text(number);
    tree_.write("sys/devices/" + device + "/model", "Samsung SSD 990 PRO 2TB\n");
    add("nvme", device,
        {{"temp1", text(reading), "Composite"}, {"temp2", text(reading + 20000), "Sensor 1"}});
  }
  void addSATA(int number, int port, int reading) {
    const std::string ata = "pci0000:00/0000:00:17.0/ata" + text(number);
    const std::string host = text(number - 1);
    tree_.write("sys/devices/" + ata + "/ata_port/ata" + text(number) + "/port_no",
                text(port) + "\n");
    const std::string drive = ata + "/host" + host + "/target" + host + ":0:0/" + host + ":0:0:0";
    tree_.write("sys/devices/" + drive + "/model", "ST8000NM0055-1RM\n");
    add("drivetemp", drive, {{"temp1", text(reading)}});
  }

  Numbers numbers_;
  Tree tree_;
  int chip_;
};

/// Each temperature's reading, with the sensor's key and name.
using Sensors = std::map<std::string, std::pair<std::string, std::string>>;

Sensors sensorsOf(const Tree& tree) {
  LinuxMachine machine(tree.roots(), kWithDrives, HeldClock::calls());
  std::map<std::string, std::string> names;
  for (const SensorName& each : machine.sensorNames()) names[each.key] = each.name;
  Sensors sensors;
  for (const SensorListing& each : machine.inventory()) {
    sensors[each.raw] = {each.key, names[each.key]};
  }
  return sensors;
}

TEST(SensorIdentity, KeysAndNamesStayWhenTheKernelCountsInAnotherOrder) {
  Computer before({});
  const Sensors expected = sensorsOf(before.tree());
  ASSERT_EQ(expected.size(), 15u);
  Computer chips({.chip = 90, .step = -3});
  EXPECT_EQ(sensorsOf(chips.tree()), expected) << "of hwmon";
  Computer buses({.bus = "17", .otherBus = "2a"});
  EXPECT_EQ(sensorsOf(buses.tree()), expected) << "of PCI buses";
  Computer others({.nvme = 5, .ata = 9, .i2c = 12, .zone = 3, .usb = 4});
  EXPECT_EQ(sensorsOf(others.tree()), expected) << "of drives, adapters, zones, USB buses";
}

TEST(SensorIdentity, ChipsThatGoChangeNoOtherExceptTheirTwins) {
  Computer whole({});
  const Sensors expected = sensorsOf(whole.tree());
  for (int chip = 0; chip < whole.chips(); ++chip) {
    Computer computer({});
    computer.removeChip(chip);
    const Sensors left = sensorsOf(computer.tree());
    ASSERT_LT(left.size(), expected.size());
    for (const auto& [reading, sensor] : left) {
      EXPECT_EQ(sensor.first, expected.at(reading).first) << "the key of " << reading;
      const std::string& before = expected.at(reading).second;
      const bool isTwin = before.starts_with("Samsung") || before.starts_with("ST8000");
      EXPECT_TRUE(sensor.second == before || isTwin) << sensor.second;
    }
  }
}

TEST(SensorIdentity, EqualDevicesShowTheirPlaces) {
  Computer computer({});
  EXPECT_THAT(shown(computer.tree(), kWithDrives),
              ::testing::IsSupersetOf({Pair("Samsung SSD 990 PRO 2TB (00:01.1/01.0)", 42),
                                       Pair("Samsung SSD 990 PRO Sensor 1 (00:1d.0)", 63),
                                       Pair("ST8000NM0055-1RM (SATA 1)", 44),
                                       Pair("ST8000NM0055-1RM (SATA 2)", 45)}));
  computer.tree().write("sys/bus/pci/slots/7/address", "0000:0a:00\n");
  EXPECT_THAT(shown(computer.tree(), kWithDrives),
              Contains(Pair("Samsung SSD 990 PRO 2TB (Slot 7)", 43)));
}

TEST(SensorIdentity, TwoSataControllersShowTheirAddresses) {
  Computer computer({});
  computer.tree().folder("sys/devices/pci0000:00/0000:00:1a.0/ata9/ata_port/ata9");
  for (const char* port : {"17.0/ata1/ata_port/ata1", "1a.0/ata9/ata_port/ata9"}) {
    computer.tree().link("sys/class/ata_port/" + std::string(port).substr(19),
                         "sys/devices/pci0000:00/0000:00:" + std::string(port));
  }
  EXPECT_THAT(shown(computer.tree(), kWithDrives),
              Contains(Pair("ST8000NM0055-1RM (00:17.0 SATA 1)", 44)));
}

TEST(SensorIdentity, NamesDifferAlsoIfNothingTellsTheDevicesApart) {
  Tree tree;
  for (int zone = 0; zone < 3; ++zone) {
    addChip(tree, zone, "iwlwifi_" + text(zone), "virtual/thermal/thermal_zone" + text(zone),
            {{"temp1", text(41000 + zone * 1000)}});
  }
  std::set<int> degrees;
  for (const auto& [name, reading] : shown(tree)) {
    EXPECT_THAT(name, ::testing::MatchesRegex("Wi-Fi \\(....\\)"));
    degrees.insert(reading);
  }
  EXPECT_THAT(degrees, ElementsAre(41, 42, 43));
}

TEST(SensorIdentity, KeyIsTheSameInEveryRelease) {
  Tree tree;
  addChip(tree, 0, "lm75", "pci0000:00/i2c-1/1-0048", {{"temp1", "30000"}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  ASSERT_EQ(machine.sensorNames().size(), 1u);
  EXPECT_EQ(machine.sensorNames()[0].key, "wbNN") << "other keys break recordings and dashboards";
}

TEST(SensorIdentity, BuiltInKeyIsThatOfAPlaceInTheProcessor) {
  Tree tree;
  addChip(tree, 0, "coretemp", "platform/coretemp.0", {{"temp2", "41000", "Core 0"}});
  addChip(tree, 1, "coretemp", "platform/coretemp.1", {{"temp2", "42000", "Core 0"}});
  addChip(tree, 2, "ibmpowernv", "platform/opal", {{"temp1", "43000", "CPU Core 1"}});
  for (const char* processor : {"cpu0", "cpu1"}) {
    const std::string topology = "sys/devices/system/cpu/" + std::string(processor) + "/topology/";
    tree.write(topology + "physical_package_id", "0\n");
    tree.write(topology + "die_id", std::string(1, processor[3]) + "\n");
  }
  const Sensors all = sensorsOf(tree);
  EXPECT_EQ(all.at("41000").first, "TC1C");
  EXPECT_THAT(shown(tree), ElementsAre(Pair("CPU Core 1", 41), Pair("CPU Core 1 (coretemp.1)", 42),
                                       Pair("CPU Core 1 (opal)", 43)));
  tree.remove("sys/class/hwmon/hwmon0");
  const Sensors left = sensorsOf(tree);
  EXPECT_EQ(left.at("42000").first, all.at("42000").first) << "the second die's";
  EXPECT_EQ(left.at("43000").first, all.at("43000").first) << "the firmware's";
}

TEST(SensorIdentity, SensorThatIsFoundLaterIsShownByTheNextEngine) {
  Tree tree;
  addChip(tree, 0, "lm75", "pci0000:00/i2c-1/1-0048", {{"temp1", "30000"}});
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  Sampler sampler(machine);
  addChip(tree, 1, "lm75", "pci0000:00/i2c-1/1-0049", {{"temp1", "40000"}});
  sampler.pass();
  EXPECT_EQ(sampler.full(), (Entries{{"lm75 Sensor 1", "30"}}));
  EXPECT_EQ(temperature(machine, keyOf("lm75", "pci0000:00/i2c-1/1-0049")), 40);
  Sampler next(machine);
  next.pass();
  EXPECT_EQ(next.full(),
            (Entries{{"lm75 Sensor 1 (I2C 0-48)", "30"}, {"lm75 Sensor 1 (I2C 0-49)", "40"}}));
}

TEST(SensorIdentity, SecondGraphicsCardLeavesTheFirstItsKey) {
  Tree tree;
  addChip(tree, 1, "amdgpu", "pci0000:00/0000:00:01.0/0000:03:00.0", {{"temp1", "44000", "edge"}});
  const Sensors alone = sensorsOf(tree);
  EXPECT_EQ(alone.at("44000").second, "GPU Die");
  EXPECT_EQ(shownInShort(tree), (std::map<std::string, int>{{"GPU Diode", 44}}));
  addChip(tree, 0, "amdgpu", "pci0000:00/0000:00:01.1/0000:04:00.0", {{"temp1", "50000", "edge"}});
  const Sensors both = sensorsOf(tree);
  EXPECT_EQ(both.at("44000").first, alone.at("44000").first);
  EXPECT_THAT(shown(tree),
              ElementsAre(Pair("GPU Die (00:01.0)", 44), Pair("GPU Die (00:01.1)", 50)));
}

/// The keys of a chip's temperatures, by the files.
std::map<std::string, std::string> keysOf(const std::vector<ChannelFiles>& channels) {
  Tree tree;
  addChip(tree, 0, "newchip", "platform/newchip", channels);
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  std::map<std::string, std::string> keys;
  for (const SensorListing& each : machine.inventory()) keys[each.file] = each.key;
  return keys;
}

TEST(SensorIdentity, LabelThatNoOtherTemperatureHasCountsInsteadOfTheChannel) {
  const auto key = keysOf({{"temp1", "31000", "CPU"}}).at("temp1_input");
  EXPECT_EQ(keysOf({{"temp3", "31000", "CPU"}, {"in1", "9", "CPU"}}).at("temp3_input"), key);
  const auto others = keysOf({{"temp4", "31000", "Other"}, {"temp5", "32000", "Other"}});
  EXPECT_EQ(keysOf({{"temp5", "31000", "Other"}, {"temp6", "32000", "Other"}}).at("temp5_input"),
            others.at("temp5_input"));
}

TEST(SensorIdentity, SensorsWhoseKeysWouldBeEqualGetTwo) {
  const ChannelFiles first{"temp1", "31000", "Input 720"}, second{"temp2", "32000", "Input 1044"};
  ASSERT_EQ(keysOf({first}).at("temp1_input"), keysOf({second}).at("temp2_input"));
  const auto keys = keysOf({first, second});
  EXPECT_NE(keys.at("temp1_input"), keys.at("temp2_input"));
  EXPECT_EQ(keysOf({second, first}), keys);
}

TEST(SensorIdentity, NetworkCardHasItsKeyAlsoBeforeItsInterfaceIsThere) {
  Tree tree;
  const std::string device = "pci0000:00/0000:00:1c.0/0000:02:00.0";
  addChip(tree, 0, "ice", device, {{"temp1", "31000"}});
  tree.folder("sys/devices/" + device + "/net/eth0");
  EXPECT_EQ(sensorsOf(tree).at("31000").first, keyOf("ice", device));
}

}  // namespace
}  // namespace halvermonte::test
