// A machine that the monitor knows nothing about, through every output.
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "halvermonte/SimulatedMachine.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/list/SensorList.hpp"
#include "monitor/report/Report.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

/// Gets a degree warmer with each tick.
class Kettle : public TestMachine {
 public:
  Kettle() {
    keys["TC0P"] = sp78(40);
    keys["FNum"] = ui8(1);
    keys["F0Ac"] = fpe2(1200);
    keys["F0ID"] = fanDescriptor("Lid");
    setTemperatureSensors({sensor("gas gauge battery", 30)});
    drives = {DriveStatistics{1000, 2000}, DriveStatistics{}};
  }

  std::string name() override { return "Kettle"; }
  bool isThisComputer() override { return true; }
  bool nextTick() override {
    keys["TC0P"] = sp78(++degrees_);
    return true;
  }
  SensorInventory inventory() override {
    SensorInventory listed(3);
    listed[0].key = "TC0P";
    listed[1] = {.driver = "lid",
                 .device = "i2c-0",
                 .file = "fan1_input",
                 .label = "",
                 .quantity = "fan",
                 .key = "F0Ac",
                 .reason = "",
                 .state = "opened each time",
                 .raw = "1200"};
    listed[2] = {.driver = "lid",
                 .device = "i2c-0",
                 .file = "in0_input",
                 .label = "Handle",
                 .quantity = "voltage",
                 .key = "",
                 .reason = "no name for its kind",
                 .state = "read",
                 .raw = "1208"};
    return listed;
  }
  size_t refusedSensors() override { return 2; }
  std::string driveSource(size_t index) override { return index == 0 ? "sda" : ""; }
  std::optional<HostFacts> hostFacts() override {
    HostFacts facts;
    facts.uptime = 3660;
    return facts;
  }

 private:
  int degrees_ = 40;
};

Choice chosen(const Options& options = {}) {
  return chooseMachine(options, std::make_unique<Kettle>());
}

std::vector<std::string> reportOf(const PassView& view) {
  std::vector<std::string> lines;
  for (const Line& line : reportLines(view, {})) lines.push_back(rendered(line, false));
  return lines;
}

TEST(OwnMachine, IsListedWithItsKeysSensorsAndDrives) {
  const Choice choice = chosen();
  const std::string list = sensorList(*choice.sampling, {});
  EXPECT_THAT(list, StartsWith("This computer: Kettle\n"));
  for (const char* row :
       {"\n  CPU 1 Proximity +40 °C +TC0P +SMC sp78 +2800 +full list\n",
        "\n  Lid +1200 rpm +F0Ac +lid i2c-0/fan1_input +1200 +fans\n",
        "\n  - +- +- +lid i2c-0/in0_input \"Handle\" +1208 +no: no name for its kind; no reading\n",
        "\n  Gas Gauge Battery +30 °C +- +HID temperature \"gas gauge battery\" +- +full list\n",
        "\n  Disks +1 KB read, 2 KB written +- +block sda +1000 2000 +disks\n",
        "\n  Disks +Zero KB read, Zero KB written +- +drive 2 +0 0 +disks\n"}) {
    EXPECT_THAT(list, ContainsRegex(row));
  }
}

TEST(OwnMachine, IsReported) {
  const Choice choice = chosen();
  EXPECT_EQ(choice.hint, "sensors that this user may not read: 2 (see --list)");
  EXPECT_THAT(
      reportOf(choice.sampling->pass()),
      AllOf(Contains("This computer: Kettle"), Contains("test   up 1 h 1 min"),
            Contains("  Lid   1200 rpm"), Contains(StartsWith("  CPU 1 Proximity     40 °C"))));
  EXPECT_THAT(reportOf(choice.sampling->pass()),
              Contains(StartsWith("  CPU 1 Proximity     41 °C")));
}

Choice recorded() {
  Options options;
  options.recordingPath = "unused";
  return chosen(options);
}

TEST(OwnMachine, IsTheSameWhileItIsRecorded) {
  const Choice plain = chosen();
  const std::string list = sensorList(*plain.sampling, {});
  const std::vector<std::string> report = reportOf(plain.sampling->pass());
  const Choice choice = recorded();
  EXPECT_EQ(choice.hint, plain.hint);
  EXPECT_EQ(sensorList(*choice.sampling, {}), list);
  EXPECT_EQ(reportOf(choice.sampling->pass()), report);
}

TEST(OwnMachine, RecordingHasTheDrivesOfAMachineWithoutSensors) {
  Options options;
  options.recordingPath = "unused";
  auto machine = std::make_unique<TestMachine>();
  machine->drives = {DriveStatistics{1000, 2000}};
  const Choice choice = chooseMachine(options, std::move(machine));
  choice.sampling->pass();
  EXPECT_THAT(choice.sampling->recorder()->machineFile(), HasSubstr("\"Bytes (Read)\": 1000"));
}

TEST(OwnMachine, RecordingGivesTheSamePasses) {
  const Choice choice = recorded();
  std::vector<std::vector<SensorView>> seen;
  for (int pass = 0; pass < 3; ++pass) seen.push_back(choice.sampling->pass().temperatures);
  const std::string recording = choice.sampling->recorder()->machineFile();
  EXPECT_EQ(recording.find("\"hostName\""), recording.npos) << "unless the user asks for it";
  Sampling replay({.machine = SimulatedMachine::fromText(recording, "recording.json")});
  for (const std::vector<SensorView>& readings : seen) {
    EXPECT_THAT(readings, Not(IsEmpty()));
    EXPECT_EQ(replay.pass().temperatures, readings);
  }
}

}  // namespace
}  // namespace halvermonte::test
