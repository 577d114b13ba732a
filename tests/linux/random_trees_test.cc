// What holds for the temperatures of any computer: random chips at random places.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/BuiltInNames.hpp"
#include "platform/linux/hwmon/NameTable.hpp"
#include "tests/linux/Computer.hpp"
#include "tests/linux/HeldClock.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {
namespace {

/// A chip without the numbers that a kernel counts up. They stand in angle brackets: <d> is another
/// one for each chip, <i3> and <b3> are those of the fourth I2C adapter and PCI bus.
struct Part {
  std::string driver, device;
  std::vector<ChannelFiles> channels;
  std::vector<std::pair<std::string, std::string>> files = {};  ///< below the devices' folder
  bool isOld = false;
  bool stays = false;  ///< the processors and a Mac's controller do not come and go
};

/// The numbers of one boot.
class Boot {
 public:
  Boot(int offset, bool isReversed) : offset_(offset), isReversed_(isReversed) {}

  void lay(std::vector<Part> parts, Tree& tree) {
    if (isReversed_) std::reverse(parts.begin(), parts.end());
    for (const Part& part : parts) {
      ++count_;
      const std::string driver = numbered(part.driver), device = numbered(part.device);
      for (const auto& [file, text] : part.files) {
        tree.write("sys/devices/" + numbered(file), text + "\n");
      }
      (part.isOld ? addOldChip : addChip)(tree, offset_ + count_, driver, device, part.channels);
    }
  }

 private:
  std::string numbered(const std::string& text) const {
    std::string result = text;
    for (size_t start; (start = result.find('<')) != std::string::npos;) {
      const size_t end = result.find('>', start);
      result.replace(start, end - start + 1, numberOf(result.substr(start + 1, end - start - 1)));
    }
    return result;
  }

  std::string numberOf(const std::string& name) const {
    if (name == "d") return std::to_string(offset_ + count_);
    const int index = std::stoi(name.substr(1));
    if (name[0] == 'i') return std::to_string(offset_ + index);  // adapters keep their order
    std::array<char, 8> hexadecimal{};
    const int bus = isReversed_ ? 0xf0 - index : 0x20 + index;
    std::snprintf(hexadecimal.data(), hexadecimal.size(), "%02x", static_cast<unsigned>(bus));
    return hexadecimal.data();
  }

  int offset_;
  bool isReversed_;
  int count_ = 0;
};

/// Makes the parts of a computer. Each temperature has a number of degrees of its own.
class Maker {
 public:
  explicit Maker(uint32_t seed) : random_(seed) {}

  std::vector<Part> computer() {
    addProcessors();
    for (size_t chips = 8 + below(6); chips > 0; --chips) addChipAtRandomPlace();
    return std::move(parts_);
  }

 private:
  size_t below(size_t end) { return random_() % end; }
  template <size_t size>
  std::string oneOf(const std::array<const char*, size>& texts) {
    return texts[below(size)];
  }

  ChannelFiles channel(const std::string& label) {
    constexpr int kFirst = 15;  // above the flags of a Mac, and below open inputs
    const int channel = ++channels_;
    return {"temp" + std::to_string(channel), std::to_string((kFirst + channel) * 1000), label};
  }

  std::vector<ChannelFiles> channelsWithLabels(const std::vector<std::string>& labels) {
    std::vector<ChannelFiles> all;
    for (const std::string& label : labels) all.push_back(channel(label));
    return all;
  }

  std::vector<ChannelFiles> oddChannels() {
    static const std::array kLabels = {
        "",
        "",
        "",
        "Composite",
        "Sensor 1",
        "Sensor 2",
        "edge",
        "junction",
        "SYSTIN",
        "CPU",
        "Other",
        "Other",
        "Other 1",
        "3",
        "temp2",
        "T_Sensor",
        "  padded  out  ",
        "Caf\xc3\xa9",
        "\xc3\xa4",
        "loc1",
        "PHY Temperature",
        "vram_ch_1",
        "An eighty characters long label that is longer than the longest name that there is, so",
        "AnEightyCharactersLongLabelOfOneWordThatIsLongerThanTheLongestNameThatThereIs"};
    std::vector<std::string> labels;
    for (size_t count = 1 + below(3); count > 0; --count) labels.push_back(oneOf(kLabels));
    return channelsWithLabels(labels);
  }

  void addProcessors() {
    const bool isMac = below(3) == 0;
    if (isMac) {
      parts_.push_back(
          {.driver = "applesmc",
           .device = "platform/applesmc.768",
           .channels = channelsWithLabels({"TA0P", "TC0D", "TC1C", "TC2C", "TG0D", "TG1D", "TB3T",
                                           "TH0a", "TC0c", "TP0P", "Th0A"}),
           .isOld = true,
           .stays = true});
    }
    for (size_t socket = 0; socket < 1 + below(2); ++socket) {
      const std::string number = std::to_string(socket);
      parts_.push_back(
          {.driver = "coretemp",
           .device = "platform/coretemp." + number,
           .channels = channelsWithLabels({"Package id " + number, "Core 0", "Core 4"}),
           .stays = isMac});
    }
  }

  void addChipAtRandomPlace() {
    static const std::array kDrivers = {"nvme",
                                        "drivetemp",
                                        "amdgpu",
                                        "nouveau",
                                        "xe",
                                        "jc42",
                                        "spd5118",
                                        "lm75",
                                        "corsairpsu",
                                        "kraken2",
                                        "asusec",
                                        "nct6798",
                                        "it8688",
                                        "thinkpad",
                                        "dell_smm",
                                        "cros_ec",
                                        "BAT0",
                                        "iwlwifi_<d>",
                                        "mt7921_phy<d>",
                                        "ice",
                                        "i350bb",
                                        "scmi_sensors",
                                        "gigabyte_wmi",
                                        "acpitz",
                                        "soc_thermal",
                                        "newchip",
                                        "new chip",
                                        "_thermal",
                                        "",
                                        "a_driver_of_a_long_name_that_goes_on_and_on_and_on"};
    Part part{.driver = oneOf(kDrivers), .device = "", .channels = oddChannels()};
    place(part);
    static const std::array kModels = {"Samsung SSD 990 PRO 2TB", "APPLE SSD", "",
                                       "A Model Of A Drive That Takes More Than Forty Characters"};
    part.files.emplace_back(part.device + "/model", oneOf(kModels));
    parts_.push_back(std::move(part));
  }

  /// Each is the only chip at its place.
  void place(Part& part) {
    const std::string n = std::to_string(parts_.size());
    const std::string port =
        "pci0000:00/0000:00:" + std::to_string(parts_.size() + 10) + ".0/0000:<b" + n + ">:00.0";
    const std::string smbus = "pci0000:00/0000:00:1f.4/i2c-";
    switch (below(12)) {
      case 0:
        part.device = port;
        break;
      case 1:
        part.device = port + "/0000:<b" + std::to_string(parts_.size() + 40) + ">:03.1";
        break;
      case 2:
        part.device = port + "/nvme/nvme<d>";
        break;
      case 3:
        part.device = port + "/ata<d>/host<d>/target<d>:0:0/<d>:0:0:0";
        part.files.emplace_back(port + "/ata<d>/ata_port/ata<d>/port_no", n);
        break;
      case 4:
        placeBehindSAS(part, n);
        break;
      case 5:
        part.device = smbus + "<i" + n + ">/<i" + n + ">-0018";
        break;
      case 6:
        part.device = smbus + "<i0>/i2c-<i" + n + ">/<i" + n + ">-0048";
        break;
      case 7:
        part.device = "pci0000:00/0000:00:14.0/usb<d>/<d>-2/<d>-2." + n + "/<d>-2." + n +
                      ":1.0/0003:1B1C:1C0C.00<b0>";
        break;
      case 8:
        part.device = port + "/mdio_bus/r8169-0-<d>/r8169-0-<d>:00";
        part.driver = "r8169_0_<d>:00";
        break;
      case 9:
        part.device = port + "/net/eth<d>";
        part.driver = "eth<d>";
        break;
      case 10:
        part.device = port + "/ieee80211/phy<d>";
        break;
      default:
        part.device = "platform/device-" + n + ".<d>.auto";
    }
  }

  /// The targets of such an adapter are counted as they are found.
  void placeBehindSAS(Part& part, const std::string& bay) {
    const std::string end =
        "pci0000:00/0000:00:03.0/host<d>/port-<d>:0/expander-<d>:0/port-<d>:0:<d>/"
        "end_device-<d>:0:<d>";
    part.device = end + "/target<d>:0:<d>/<d>:0:<d>:0";
    const std::string facts = end + "/sas_device/end_device-<d>:0:<d>/";
    if (below(2) == 0) part.files.emplace_back(facts + "bay_identifier", bay);
    part.files.emplace_back(facts + "sas_address", "0x5000c5001234" + bay);
  }

  std::mt19937 random_;
  std::vector<Part> parts_;
  int channels_ = 0;
};

/// Each temperature's key and name, by its whole degrees.
struct Sensors {
  std::map<int, std::string> keys, names;
};

Sensors sensorsOf(const Tree& tree) {
  LinuxMachine machine(tree.roots(), {.driveTemperatures = true}, HeldClock::calls());
  Sampler sampler(machine);
  sampler.pass();
  Sensors sensors;
  for (const auto& [name, degrees] : sampler.full()) {
    EXPECT_TRUE(sensors.names.emplace(std::stoi(degrees), name).second) << name;
  }
  for (const SensorListing& each : machine.inventory()) {
    sensors.keys[std::stoi(each.raw) / 1000] = each.key;
  }
  return sensors;
}

std::set<int> degreesOf(const std::vector<Part>& parts) {
  std::set<int> degrees;
  for (const Part& part : parts) {
    for (const ChannelFiles& each : part.channels) degrees.insert(std::stoi(each.input) / 1000);
  }
  return degrees;
}

bool isPrintable(char character) { return character >= ' ' && character <= '~'; }

void expectGoodNames(const Sensors& sensors) {
  std::set<std::string> names;
  for (const auto& [degrees, name] : sensors.names) {
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_THAT(name, ::testing::SizeIs(::testing::AllOf(::testing::Ge(1u), ::testing::Le(40u))));
    EXPECT_TRUE(std::all_of(name.begin(), name.end(), isPrintable)) << name;
    EXPECT_EQ((" " + name + " ").find("  "), std::string::npos) << "blanks of '" << name << "'";
  }
}

void expectGoodKeys(const Sensors& sensors, const std::vector<Part>& parts) {
  std::set<std::string> allowed;
  for (const linuxos::BuiltInKeyRow& row : linuxos::builtInKeyRows()) allowed.emplace(row.key);
  for (const Part& part : parts) {
    if (!part.isOld) continue;
    for (const ChannelFiles& each : part.channels) allowed.insert(each.label);
  }
  std::set<std::string> keys;
  for (const auto& [degrees, key] : sensors.keys) {
    EXPECT_TRUE(keys.insert(key).second) << key;
    EXPECT_EQ(key.size(), 4u);
    EXPECT_TRUE(std::all_of(key.begin(), key.end(), isPrintable)) << key;
    EXPECT_TRUE(!isBuiltInKey(key) || allowed.contains(key)) << key;
  }
}

bool hasPlace(const std::string& name) { return name.ends_with(')'); }

/// The start of a name, which a place does not change.
std::string stemOf(const std::string& name) {
  constexpr size_t kNeverCut = 5;
  return name.substr(0, std::min(name.rfind(" ("), kNeverCut));
}

/// Only a chip that shared a name, and so showed its place, takes those of others away.
void expectOnlyPlacesLost(const Sensors& before, const Sensors& after) {
  const bool wasShared =
      std::any_of(before.names.begin(), before.names.end(), [&](const auto& sensor) {
        return !after.names.contains(sensor.first) && hasPlace(sensor.second);
      });
  for (const auto& [degrees, name] : after.names) {
    const std::string& former = before.names.at(degrees);
    EXPECT_EQ(after.keys.at(degrees), before.keys.at(degrees)) << former;
    const bool isSame = name == former;
    EXPECT_TRUE(isSame || (wasShared && hasPlace(former))) << former << ": " << name;
    EXPECT_TRUE(isSame || stemOf(name) == stemOf(former)) << former << ": " << name;
  }
}

class RandomTree : public ::testing::TestWithParam<uint32_t> {
 protected:
  RandomTree() { Boot(0, false).lay(parts, tree); }

  const std::vector<Part> parts = Maker(GetParam()).computer();
  Tree tree;
};

TEST_P(RandomTree, ShowsEveryTemperatureUnderANameAndAKeyOfItsOwn) {
  const Sensors sensors = sensorsOf(tree);
  std::set<int> shown;
  for (const auto& [degrees, name] : sensors.names) shown.insert(degrees);
  EXPECT_EQ(shown, degreesOf(parts));
  expectGoodNames(sensors);
  expectGoodKeys(sensors, parts);
}

TEST_P(RandomTree, KeepsKeysAndNamesWhenTheKernelCountsInAnotherOrder) {
  Tree other;
  Boot(30, true).lay(parts, other);
  const Sensors before = sensorsOf(tree), after = sensorsOf(other);
  EXPECT_EQ(after.keys, before.keys);
  EXPECT_EQ(after.names, before.names);
}

TEST_P(RandomTree, ChipThatGoesTakesAtMostThePlaceFromANameThatItShared) {
  const Sensors before = sensorsOf(tree);
  for (size_t i = 0; i < parts.size(); ++i) {
    if (parts[i].stays) continue;
    const std::string chip = "sys/class/hwmon/hwmon" + std::to_string(i + 1);
    tree.move(chip, "sys/gone");
    expectOnlyPlacesLost(before, sensorsOf(tree));
    tree.move("sys/gone", chip);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTree, ::testing::Range(1u, 11u));

}  // namespace
}  // namespace halvermonte::test
