// When a sensor is read, and when it has no reading.
#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/linux/Computer.hpp"
#include "tests/linux/FewDescriptors.hpp"
#include "tests/linux/HeldClock.hpp"
#include "tests/linux/WatchedCalls.hpp"

namespace halvermonte::test {
namespace {

const std::string kDrive = "pci0000:00/0000:01:00.0/nvme/nvme0";

class HwmonReadings : public ::testing::Test {
 protected:
  HwmonReadings() {
    addChip(tree, 0, "coretemp", "platform/coretemp.0",
            {{"temp1", "51000", "Package id 0"}, {"temp2", "41000", "Core 0"}});
  }

  /// The package's temperature in one pass.
  double package() { return temperature(machine(), "TC0D"); }
  LinuxMachine& machine() {
    if (!machine_)
      machine_ = std::make_unique<LinuxMachine>(tree.roots(), ComputerOptions(), calls);
    return *machine_;
  }

  Tree tree;
  WatchedCalls calls;
  const std::string drive = keyOf("nvme", kDrive, "Composite");

 private:
  std::unique_ptr<LinuxMachine> machine_;
};

TEST_F(HwmonReadings, AreReadInEachPass) {
  EXPECT_EQ(package(), 51);
  tree.write(chipFile(0, "temp1_input"), "52500\n");
  EXPECT_EQ(package(), 52.5);
}

TEST_F(HwmonReadings, AreReadOnlyOnceInAPass) {
  const Connection connection(machine());
  EXPECT_EQ(connection.temperature("TC0D"), 51);
  calls.restart();
  tree.write(chipFile(0, "temp1_input"), "60000\n");
  EXPECT_EQ(connection.temperature("TC0D"), 51);
  EXPECT_EQ(calls.reads, 0u);
}

TEST_F(HwmonReadings, TextThatIsNotANumberGivesNoReading) {
  EXPECT_EQ(package(), 51);
  for (const char* text : {"", "\n", "warm\n", "42000 mC\n", "42.5\n", "0x2a\n", "4 2000\n",
                           "42000\n42000\n", "99999999999999999999999\n", "--1\n"}) {
    tree.write(chipFile(0, "temp1_input"), text);
    EXPECT_EQ(package(), -1) << text;
    EXPECT_EQ(temperature(machine(), "TC1C"), 41) << "other sensors are still read";
  }
  tree.write(chipFile(0, "temp1_input"), std::string(1 << 20, '4'));
  EXPECT_EQ(package(), -1);
  for (const char* text : {"42000", "42000\r\n", " 42000 \n"}) {
    tree.write(chipFile(0, "temp1_input"), text);
    EXPECT_EQ(package(), 42) << text;
  }
}

TEST_F(HwmonReadings, ValueOutsideTheDriversRangeGivesNoReading) {
  EXPECT_EQ(package(), 51);
  for (const char* text : {"0\n", "-127000\n", "126000\n", "2147483647\n", "-2147483648\n"}) {
    tree.write(chipFile(0, "temp1_input"), text);
    EXPECT_EQ(package(), -1) << text;
  }
  tree.write(chipFile(0, "temp1_input"), "125000\n");
  EXPECT_EQ(package(), 125);
}

TEST_F(HwmonReadings, SentinelValuesOfDriversGiveNoReading) {
  Tree other;
  addChip(other, 0, "nct6798", "platform/nct6775.656", {{"temp2", "127000", "CPUTIN"}});
  addChip(other, 1, "nvme", "pci0000:00/nvme/nvme0", {{"temp1", "-273150", "Composite"}});
  addChip(other, 2, "thinkpad", "platform/thinkpad_hwmon", {{"temp2", "-128000", "GPU"}});
  LinuxMachine computer(other.roots(), {}, HeldClock::calls());
  for (const SensorListing& sensor : computer.inventory()) {
    EXPECT_EQ(temperature(computer, sensor.key), -1) << sensor.driver;
  }
}

TEST_F(HwmonReadings, InputThatMayBeOpenIsBelievedOnceItWasCool) {
  addChip(tree, 5, "nct6798", "platform/nct6775.656", {{"temp3", "93000", "AUXTIN0"}});
  const std::string input = keyOf("nct6798", "platform/nct6775.656", "AUXTIN0");
  const auto read = [&](const std::string& number) {
    tree.write(chipFile(5, "temp3_input"), number + "\n");
    calls.seconds += 10;
    return temperature(machine(), input);
  };
  EXPECT_EQ(read("93000"), -1);
  EXPECT_EQ(listed(machine(), "nct6798", "temp3_input").state,
            "no reading: nothing seems to be connected");
  EXPECT_EQ(read("80000"), -1);
  EXPECT_EQ(read("0"), -1);
  EXPECT_EQ(read("105000"), -1) << "0 is no reading either";
  EXPECT_EQ(read("79000"), 79);
  EXPECT_EQ(read("105000"), 105);
  addChip(tree, 6, "lm75", "pci0000:00/i2c-0/0-0048", {{"temp1", "30000"}});
  EXPECT_EQ(read("106000"), 106) << "also after the chips were looked at again";
}

TEST_F(HwmonReadings, ConstantsOfFirmwaresAreNotReadings) {
  const auto read = [](const std::string& number, const std::string& critical,
                       const std::string& driver = "acpitz") {
    Tree other;
    addChip(other, 0, driver, "virtual/thermal/thermal_zone0", {{"temp1", number}});
    other.write(chipFile(0, "temp1_crit"), critical);
    LinuxMachine computer(other.roots(), {}, HeldClock::calls());
    return static_cast<int>(temperature(computer, keyOf(driver, "virtual/thermal/thermal_zone0")));
  };
  EXPECT_EQ(read("16800", "18800"), -1);
  EXPECT_EQ(read("16800", "95000"), 16);
  EXPECT_EQ(read("16800", "18800", "lm75"), 16);
  EXPECT_EQ(read("27800", "119000"), -1);
  EXPECT_EQ(read("29800", "119000"), -1);
  EXPECT_EQ(read("28800", "119000"), 28);
  EXPECT_EQ(read("27800", "95000"), 27);
}

TEST_F(HwmonReadings, FaultyAndDisabledSensorsAreNotReadUntilTheyWorkAgain) {
  tree.write(chipFile(0, "temp1_fault"), "1\n").write(chipFile(0, "temp2_enable"), "0\n");
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(temperature(machine(), "TC1C"), -1);
  EXPECT_EQ(calls.opens("_input"), 0u);
  tree.write(chipFile(0, "temp1_fault"), "0\n").write(chipFile(0, "temp2_enable"), "1\n");
  calls.seconds += 10;
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(temperature(machine(), "TC1C"), 41);
  tree.write(chipFile(0, "temp1_fault"), "1\n");
  EXPECT_EQ(package(), -1);
  tree.write(chipFile(0, "temp1_fault"), "0\n");
  EXPECT_EQ(package(), 51) << "in the next pass, as it worked before";
}

TEST_F(HwmonReadings, SensorsAreReadIfTheirFaultAndEnableFilesCannotBeRead) {
  tree.write(chipFile(0, "temp1_fault"), "1\n").write(chipFile(0, "temp2_enable"), "0\n");
  calls.readFails = [](std::string_view path) {
    return path.ends_with("_fault") || path.ends_with("_enable") ? EIO : 0;
  };
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(temperature(machine(), "TC1C"), 41);
}

TEST_F(HwmonReadings, FailedReadAffectsOnlyThatSensor) {
  EXPECT_EQ(package(), 51);
  for (const int error : {EIO, ENODATA, ENXIO, EAGAIN, ETIMEDOUT, EPERM, EOPNOTSUPP, EBUSY}) {
    calls.readFails = failingOn("temp1_input", error);
    EXPECT_EQ(package(), -1) << error;
    EXPECT_EQ(temperature(machine(), "TC1C"), 41);
    calls.readFails = nullptr;
    EXPECT_EQ(package(), 51) << "in the next pass";
  }
}

TEST_F(HwmonReadings, RemovedSensorIsTriedEveryTenSeconds) {
  EXPECT_EQ(package(), 51);
  calls.readFails = failingOn("temp1_input", ENODEV);
  EXPECT_EQ(package(), -1);
  calls.readFails = nullptr;
  calls.openFails = failingOn("temp1_input", ENOENT);
  package();
  calls.restart();
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(calls.opens("temp1_input"), 0u);
  calls.openFails = nullptr;
  calls.seconds += 9;
  EXPECT_EQ(package(), -1);
  calls.seconds += 1;
  EXPECT_EQ(package(), 51);
}

TEST_F(HwmonReadings, SensorThatNeverHadAReadingIsTriedEveryTenSeconds) {
  for (const char* text : {"-127000\n", "\n"}) {
    tree.write(chipFile(0, "temp1_input"), text);
    LinuxMachine computer(tree.roots(), {}, calls);
    calls.restart();
    for (int pass = 0; pass < 3; ++pass) EXPECT_EQ(temperature(computer, "TC0D"), -1);
    EXPECT_EQ(calls.readsOf("temp1_input"), 1u);
    tree.write(chipFile(0, "temp1_input"), "51000\n");
    calls.seconds += 9.5;
    EXPECT_EQ(temperature(computer, "TC0D"), -1);
    calls.seconds += 0.5;
    EXPECT_EQ(temperature(computer, "TC0D"), 51);
    tree.write(chipFile(0, "temp1_input"), text);
    EXPECT_EQ(temperature(computer, "TC0D"), -1);
    tree.write(chipFile(0, "temp1_input"), "52000\n");
    EXPECT_EQ(temperature(computer, "TC0D"), 52) << "in each pass once it had a reading";
  }
}

TEST_F(HwmonReadings, UnreadableSensorIsTriedEveryTenSeconds) {
  calls.openFails = failingOn("temp1_input", EACCES);
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(package(), -1);
  calls.restart();
  EXPECT_EQ(package(), -1);
  EXPECT_EQ(calls.opens("temp1_input"), 0u);
  calls.openFails = nullptr;
  calls.seconds += 10;
  EXPECT_EQ(package(), 51);
}

TEST_F(HwmonReadings, AddedAndRemovedChipsAreNoticedAtTheNextPass) {
  EXPECT_EQ(temperature(machine(), drive), -1);
  addChip(tree, 5, "nvme", kDrive, {{"temp1", "31000", "Composite"}});
  EXPECT_EQ(temperature(machine(), drive), 31);
  tree.remove("sys/class/hwmon/hwmon5");
  EXPECT_EQ(temperature(machine(), drive), -1);
  EXPECT_EQ(package(), 51);
}

TEST_F(HwmonReadings, ChipWhoseFilesAppearLaterIsFound) {
  EXPECT_EQ(temperature(machine(), keyOf("nvme", "pci0000:00/nvme0")), -1);
  tree.folder("sys/devices/pci0000:00/nvme0/hwmon5");
  tree.link("sys/class/hwmon/hwmon5", "sys/devices/pci0000:00/nvme0/hwmon5");
  EXPECT_EQ(temperature(machine(), keyOf("nvme", "pci0000:00/nvme0")), -1);
  tree.write(chipFile(5, "name"), "nvme\n").write(chipFile(5, "temp1_input"), "31000\n");
  EXPECT_EQ(temperature(machine(), keyOf("nvme", "pci0000:00/nvme0")), 31);
}

TEST_F(HwmonReadings, NewDeviceWithTheNumberOfARemovedOneIsNotMistakenForIt) {
  addChip(tree, 5, "nvme", kDrive, {{"temp1", "31000", "Composite"}});
  EXPECT_EQ(temperature(machine(), drive), 31);
  // The link is moved, not removed. Unlike the kernel, a disk's file system may otherwise give the
  // next link the same inode number.
  tree.move("sys/class/hwmon/hwmon5", "sys/former").remove("sys/devices/pci0000:00");
  addChip(tree, 5, "iwlwifi_1", "virtual/thermal/thermal_zone1", {{"temp1", "44000"}});
  EXPECT_EQ(temperature(machine(), drive), -1);
  EXPECT_EQ(temperature(machine(), keyOf("iwlwifi_1", "virtual/thermal/thermal_zone1")), 44);
}

TEST_F(HwmonReadings, HardwareMonitoringMayAppearAndDisappear) {
  tree.remove("sys/class");
  EXPECT_EQ(package(), -1);
  addChip(tree, 1, "coretemp", "platform/coretemp.0", {{"temp1", "50000", "Package id 0"}});
  EXPECT_EQ(package(), 50);
  tree.remove("sys/class");
  EXPECT_EQ(package(), -1);
  addChip(tree, 2, "coretemp", "platform/coretemp.0", {{"temp1", "49000", "Package id 0"}});
  EXPECT_EQ(package(), 49);
}

TEST_F(HwmonReadings, CommandsAreSentToADeviceAtMostEveryTenSeconds) {
  addChip(tree, 5, "nvme", kDrive, {{"temp1", "31000", "Composite"}});
  EXPECT_EQ(temperature(machine(), drive), 31);
  tree.write(chipFile(5, "temp1_input"), "35000\n");
  calls.seconds += 9.5;
  EXPECT_EQ(temperature(machine(), drive), 31) << "the last value is kept meanwhile";
  addChip(tree, 6, "iwlwifi_1", "virtual/thermal/thermal_zone1", {{"temp1", "44000"}});
  EXPECT_EQ(temperature(machine(), drive), 31) << "also if another chip is added";
  calls.seconds += 0.5;
  EXPECT_EQ(temperature(machine(), drive), 35);
  calls.readFails = failingOn("temp1_input", EIO);
  calls.seconds += 10;
  EXPECT_EQ(temperature(machine(), drive), -1);
}

TEST_F(HwmonReadings, SleepingGraphicsDeviceIsNotRead) {
  const std::string device = "pci0000:00/0000:03:00.0";
  addChip(tree, 5, "amdgpu", device, {{"temp1", "44000", "edge"}, {"fan1", "900"}});
  tree.write("sys/devices/" + device + "/power/runtime_status", "suspended\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  EXPECT_EQ(fans(machine()).front().second, -1);
  const SensorListing listing = listed(machine(), "amdgpu", "temp1_input");
  EXPECT_EQ(listing.state, "asleep: not read");
  EXPECT_EQ(calls.opens("hwmon5/temp1_input"), 0u);
  EXPECT_EQ(calls.opens("hwmon5/fan1_input"), 0u);
  tree.write("sys/devices/" + device + "/power/runtime_status", "active\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), 44);
  calls.restart();
  tree.write("sys/devices/" + device + "/power/runtime_status", "suspending\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  EXPECT_EQ(calls.reads, 1u) << "only its power state";
}

TEST_F(HwmonReadings, GraphicsDeviceInALowPowerStateIsNotRead) {
  const std::string device = "pci0000:00/0000:03:00.0";
  addChip(tree, 5, "nouveau", device, {{"temp1", "44000"}});
  tree.write("sys/devices/" + device + "/power_state", "D3cold\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), -1);
  tree.write("sys/devices/" + device + "/power_state", "D0\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), 44);
}

TEST_F(HwmonReadings, GraphicsDeviceThatMayFallAsleepIsReadEveryTenSeconds) {
  const std::string device = "pci0000:00/0000:03:00.0";
  addChip(tree, 5, "amdgpu", device, {{"temp1", "44000", "edge"}});
  tree.write("sys/devices/" + device + "/power/runtime_status", "active\n");
  tree.write("sys/devices/" + device + "/power/control", "auto\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), 44);
  tree.write(chipFile(5, "temp1_input"), "50000\n");
  EXPECT_EQ(temperature(machine(), "TG0D"), 44);
  calls.seconds += 10;
  EXPECT_EQ(temperature(machine(), "TG0D"), 50);
}

TEST_F(HwmonReadings, DanglingChipsAndFilesAreSkipped) {
  tree.link("sys/class/hwmon/hwmon7", "sys/devices/nowhere");
  tree.link(chipFile(0, "temp3_input"), "sys/nothing").write(chipFile(0, "temp3_label"), "Core 1");
  tree.write("sys/class/hwmon/stray", "").folder("sys/class/hwmon/hwmon8/device");
  tree.write(chipFile(0, "temp_input"), "1").write(chipFile(0, "temp99999999999_input"), "1");
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(temperature(machine(), "TC2C"), -1);
  EXPECT_EQ(machine().inventory().size(), 3u);
}

TEST_F(HwmonReadings, SingleFailureLosesAtMostOneReading) {
  addChip(tree, 5, "nvme", kDrive, {{"temp1", "31000", "Composite"}});
  addChip(tree, 6, "nvme", "pci0000:00/0000:02:00.0/nvme/nvme1", {{"temp1", "36000", "Composite"}});
  const std::vector<std::pair<std::string, double>> expected = {
      {"TC0D", 51},
      {"TC1C", 41},
      {drive, 31},
      {keyOf("nvme", "pci0000:00/0000:02:00.0/nvme/nvme1", "Composite"), 36}};
  for (int failing = 0;; ++failing) {
    int call = 0;
    WatchedCalls failingOnce;
    failingOnce.openFails =
        failingOnce.readFails = [&](std::string_view) { return call++ == failing ? EIO : 0; };
    LinuxMachine computer(tree.roots(), {}, failingOnce);
    int missing = 0;
    for (const auto& [key, degrees] : expected) {
      const double seen = temperature(computer, key);
      if (seen == -1) ++missing;
      EXPECT_TRUE(seen == degrees || seen == -1) << key << " at call " << failing;
    }
    EXPECT_LE(missing, 1) << "call " << failing;
    if (call <= failing) break;
    failingOnce.seconds += 10;
    for (const auto& [key, degrees] : expected) {
      EXPECT_EQ(temperature(computer, key), degrees) << key << " after call " << failing;
    }
  }
}

TEST_F(HwmonReadings, FilesAreOpenedForEachReadIfDescriptorsAreShort) {
  for (int i = 0; i < 30; ++i) {
    addChip(tree, 40 + i, "jc42", "pci0000:00/i2c-0/0-00" + std::to_string(10 + i),
            {{"temp1", std::to_string(20000 + i * 1000)}});
  }
  const std::string first = keyOf("jc42", "pci0000:00/i2c-0/0-0010");
  const std::string last = keyOf("jc42", "pci0000:00/i2c-0/0-0039");
  const FewDescriptors few(16);
  EXPECT_EQ(package(), 51);
  EXPECT_EQ(temperature(machine(), first), 20);
  EXPECT_EQ(temperature(machine(), last), 49);
  const SensorInventory inventory = machine().inventory();
  const auto openedEachTime =
      std::count_if(inventory.begin(), inventory.end(),
                    [](const SensorListing& sensor) { return sensor.state == "opened each time"; });
  EXPECT_GE(openedEachTime, 10);
}

TEST(HwmonMissing, ComputerWithoutFilesHasNoReadings) {
  const Tree tree;
  LinuxMachine machine(tree.roots(), {}, HeldClock::calls());
  EXPECT_TRUE(machine.smcService().present);
  EXPECT_EQ(temperature(machine, "TC0D"), -1);
  EXPECT_TRUE(fans(machine).empty());
  EXPECT_TRUE(machine.inventory().empty());
}

}  // namespace
}  // namespace halvermonte::test
