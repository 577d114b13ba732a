// A simulated machine without its controller: clock, HID sensors, drives and texts.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Foundation.hpp"
#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

const std::string kReportCommand = "system_profiler SPHardwareDataType -xml";

std::string hidTick(const std::string& lists) { return R"({"hid": {)" + lists + "}}"; }

std::vector<double> clockReadings(SimulatedMachine& machine, int ticks) {
  std::vector<double> readings;
  for (int tick = 0; tick < ticks; ++tick, machine.nextTick()) readings.push_back(machine.clock());
  return readings;
}

DriveStatistics statistics(SimulatedMachine& machine, size_t index) {
  return std::get<DriveStatistics>(machine.drive(index));
}

bool isUnreadable(SimulatedMachine& machine, size_t index) {
  return std::holds_alternative<UnreadableDrive>(machine.drive(index));
}

std::optional<std::string> reasonOfWalk(SimulatedMachine& machine) {
  return foundation::reasonRaisedBy([&] { machine.beginDriveWalk(); });
}

TEST(SimulatedMachine, IsNeverThisComputer) {
  EXPECT_FALSE(machineOf("{}")->isThisComputer());
  EXPECT_EQ(machineOf("{}")->name(), "Sample");
}

TEST(SimulatedMachine, IsEmptyUnlessItsFirstTickSaysOtherwise) {
  const auto machine = machineOf("{}");
  EXPECT_EQ(machine->clock(), 0);
  for (const auto kind :
       {HIDSensorKind::temperature, HIDSensorKind::current, HIDSensorKind::voltage}) {
    ASSERT_NE(machine->hidServices(kind), nullptr);
    EXPECT_TRUE(machine->hidServices(kind)->empty());
  }
  EXPECT_EQ(machine->driveCount(), 0U);
}

TEST(SimulatedMachine, AddsTheNamesOfItsFileInOrder) {
  const auto machine = machineOf("{}", R"("names": [["~ ! ", "Drive"], ["Xa00", "\u00b0C\r"]], )");
  const std::vector<SensorName> names = machine->sensorNames();
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(names[0].key, "~ ! ");
  EXPECT_EQ(names[0].name, "Drive");
  EXPECT_EQ(names[1].key, "Xa00");
  EXPECT_EQ(names[1].name,
            "\xC2\xB0"
            "C\r");
  EXPECT_TRUE(machineOf("{}")->sensorNames().empty());
  EXPECT_TRUE(machineOf("{}", R"("names": [], )")->sensorNames().empty());
}

TEST(SimulatedClock, AdvancesByASecondUnlessATickSaysOtherwise) {
  const auto machine = machineOf(R"({"time": 10.5}, {}, {"time": 3}, {}, {"time": -2})");
  EXPECT_EQ(clockReadings(*machine, 8), (std::vector<double>{10.5, 11.5, 3, 4, -2, -1, 0, 1}));
}

TEST(SimulatedHID, ListsServicesInOrder) {
  const auto machine = machineOf(hidTick(
      R"("temperature": [{"product": "b", "value": -1.5}, {"product": "", "value": 7}, {}])"));
  const auto services = machine->hidServices(HIDSensorKind::temperature);
  ASSERT_EQ(services->size(), 3U);
  EXPECT_EQ(services->at(0).product, "b");
  EXPECT_EQ(services->at(0).value, -1.5);
  EXPECT_EQ(services->at(1).product, "");
  EXPECT_EQ(services->at(2).product, std::nullopt);
  EXPECT_EQ(services->at(2).value, std::nullopt);
}

TEST(SimulatedHID, KeepsTheListsOfTheKindsApart) {
  const auto machine = machineOf(hidTick(
      R"("temperature": [{"value": 1}], "current": [{"value": 2}], "voltage": [{"value": 3}])"));
  EXPECT_EQ(machine->hidServices(HIDSensorKind::temperature)->at(0).value, 1);
  EXPECT_EQ(machine->hidServices(HIDSensorKind::current)->at(0).value, 2);
  EXPECT_EQ(machine->hidServices(HIDSensorKind::voltage)->at(0).value, 3);
}

TEST(SimulatedHID, ReplacesAListAsAWholeAndKeepsTheOthers) {
  const auto machine = machineOf(hidTick(R"("current": [{}, {}], "voltage": [{}])") + ", " +
                                 hidTick(R"("current": [{"product": "only"}])") + ", {}");
  machine->nextTick();
  machine->nextTick();
  ASSERT_EQ(machine->hidServices(HIDSensorKind::current)->size(), 1U);
  EXPECT_EQ(machine->hidServices(HIDSensorKind::current)->at(0).product, "only");
  EXPECT_EQ(machine->hidServices(HIDSensorKind::voltage)->size(), 1U);
}

TEST(SimulatedHID, HasNoListIfItIsNull) {
  const auto machine =
      machineOf(hidTick(R"("voltage": null)") + ", {}, " + hidTick(R"("voltage": [])"));
  EXPECT_EQ(machine->hidServices(HIDSensorKind::voltage), nullptr);
  machine->nextTick();
  EXPECT_EQ(machine->hidServices(HIDSensorKind::voltage), nullptr);
  machine->nextTick();
  EXPECT_NE(machine->hidServices(HIDSensorKind::voltage), nullptr);
}

TEST(SimulatedHID, WavesFollowTheClockBeyondTheLastTick) {
  const auto machine = machineOf(hidTick(
      R"("temperature": [{"wave": {"mean": 300, "amplitude": 20, "period": 4, "phase": 0.25}}])"));
  std::vector<double> readings;
  for (int tick = 0; tick < 4; ++tick, machine->nextTick()) {
    readings.push_back(*machine->hidServices(HIDSensorKind::temperature)->at(0).value);
  }
  EXPECT_DOUBLE_EQ(readings[0], 320);
  EXPECT_DOUBLE_EQ(readings[1], 300);
  EXPECT_DOUBLE_EQ(readings[2], 280);
  EXPECT_DOUBLE_EQ(readings[3], 300);
}

TEST(SimulatedHID, ListThatACallerHoldsDoesNotChange) {
  const auto machine =
      machineOf(hidTick(R"("temperature": [{"wave": {"mean": 0, "amplitude": 1, "period": 4}}])"));
  const auto held = machine->hidServices(HIDSensorKind::temperature);
  EXPECT_EQ(machine->hidServices(HIDSensorKind::temperature), held);
  machine->nextTick();
  EXPECT_NE(machine->hidServices(HIDSensorKind::temperature), held);
  EXPECT_EQ(held->at(0).value, 0);
}

TEST(SimulatedDrives, HaveOptionalSignedCounters) {
  const auto machine = machineOf(
      R"-({"drives": [{"Bytes (Read)": -1, "Bytes (Write)": 9223372036854775807},
                      {"Bytes (Write)": 5}, {}]})-");
  EXPECT_EQ(machine->driveCount(), 3U);
  EXPECT_EQ(statistics(*machine, 0).bytesRead, -1);
  EXPECT_EQ(statistics(*machine, 0).bytesWritten, INT64_MAX);
  EXPECT_EQ(statistics(*machine, 1).bytesRead, std::nullopt);
  EXPECT_EQ(statistics(*machine, 1).bytesWritten, 5);
  EXPECT_EQ(statistics(*machine, 2).bytesWritten, std::nullopt);
}

TEST(SimulatedDrives, MayLackStatisticsOrBeUnreadable) {
  const auto machine = machineOf(R"({"drives": [null, "unreadable"]})");
  EXPECT_TRUE(std::holds_alternative<DriveWithoutStatistics>(machine->drive(0)));
  EXPECT_TRUE(isUnreadable(*machine, 1));
}

TEST(SimulatedDrives, AreThoseOfTheFirstTick) {
  const auto machine = machineOf(
      R"-({"drives": [{}, {}]}, {"drives": [{"Bytes (Read)": 1}]}, {},
          {"drives": [{}, {}, {}]})-");
  machine->nextTick();
  EXPECT_EQ(machine->driveCount(), 2U);
  EXPECT_EQ(statistics(*machine, 0).bytesRead, 1);
  EXPECT_TRUE(isUnreadable(*machine, 1));
  machine->nextTick();
  EXPECT_EQ(statistics(*machine, 0).bytesRead, 1);
  machine->nextTick();
  EXPECT_EQ(machine->driveCount(), 2U);
  EXPECT_FALSE(isUnreadable(*machine, 1));
}

TEST(SimulatedDrives, AreNotMatchedIfTheFirstTickHasNull) {
  const auto machine = machineOf(R"({"drives": null}, {"drives": [{}]})");
  EXPECT_EQ(machine->driveCount(), std::nullopt);
  machine->nextTick();
  EXPECT_EQ(machine->driveCount(), std::nullopt);
}

TEST(SimulatedDrives, AreAllUnreadableIfALaterTickHasNull) {
  const auto machine = machineOf(R"({"drives": [{}, null]}, {"drives": null})");
  machine->nextTick();
  EXPECT_EQ(machine->driveCount(), 2U);
  EXPECT_TRUE(isUnreadable(*machine, 0));
  EXPECT_TRUE(isUnreadable(*machine, 1));
}

TEST(SimulatedDrives, AreUnreadableBeyondTheirList) {
  const auto none = machineOf("{}");
  EXPECT_TRUE(isUnreadable(*none, 0));
  const auto two = machineOf(R"({"drives": [{}, {}]})");
  EXPECT_FALSE(isUnreadable(*two, 1));
  EXPECT_TRUE(isUnreadable(*two, 2));
  EXPECT_TRUE(isUnreadable(*two, SIZE_MAX));
}

TEST(SimulatedDrives, RaiseInTheirTickOnly) {
  const auto machine = machineOf(R"({"drivesRaise": "gone"}, {}, {"drivesRaise": ""})");
  EXPECT_EQ(reasonOfWalk(*machine), "gone");
  machine->nextTick();
  EXPECT_EQ(reasonOfWalk(*machine), std::nullopt);
  machine->nextTick();
  EXPECT_EQ(reasonOfWalk(*machine), "");
  machine->nextTick();
  EXPECT_EQ(reasonOfWalk(*machine), std::nullopt);
}

TEST(SimulatedMachine, StaysInTheStateOfTheLastTick) {
  const auto machine =
      machineOf(R"({}, {"smc": {"keys": {}}, "drives": [], "hid": {"current": null}})");
  for (int tick = 0; tick < 5; ++tick) machine->nextTick();
  EXPECT_TRUE(machine->smcService().present);
  EXPECT_EQ(machine->hidServices(HIDSensorKind::current), nullptr);
}

TEST(SimulatedTexts, HostNameIsTheNameUnlessGivenOrNull) {
  EXPECT_EQ(machineOf("{}")->localizedHostName(), "Sample");
  EXPECT_EQ(machineOf("{}", R"("hostName": "desk", )")->localizedHostName(), "desk");
  EXPECT_EQ(machineOf("{}", R"("hostName": null, )")->localizedHostName(), std::nullopt);
}

TEST(SimulatedTexts, KernelVariablesAreSigned64BitIntegers) {
  const auto machine =
      machineOf("{}", R"("sysctl": {"a": -9223372036854775808, "b": 9223372036854775807}, )");
  EXPECT_EQ(machine->kernelVariable("a"), INT64_MIN);
  EXPECT_EQ(machine->kernelVariable("b"), INT64_MAX);
  EXPECT_EQ(machine->kernelVariable("c"), std::nullopt);
}

TEST(SimulatedCommand, IsAnsweredByItsExactText) {
  const auto machine = machineOf("{}", R"("commands": {"ps -p 1": {"output": "42\n\u00e9"}}, )");
  EXPECT_EQ(machine->outputOfCommand("ps -p 1"), "42\n\xC3\xA9");
  EXPECT_EQ(machine->outputOfCommand("ps -p 1 "), "");
}

TEST(SimulatedCommand, MayPrintRawBytesOrFailToStart) {
  const auto machine =
      machineOf("{}", R"("commands": {"a": {"outputHex": "00Ff"}, "b": {"launches": false}}, )");
  EXPECT_EQ(machine->outputOfCommand("a"), std::string("\0\xFF", 2));
  EXPECT_EQ(machine->outputOfCommand("b"), std::nullopt);
}

// The single item of the report that `processor` makes.
Dictionary itemOf(const std::string& processor) {
  const auto machine = machineOf("{}", R"("processor": )" + processor + ", ");
  const Array report =
      foundation::propertyList(machine->outputOfCommand(kReportCommand).value()).asArray();
  EXPECT_EQ(report.size(), 1U);
  const Array items = report[0].asDictionary().find("_items").asArray();
  EXPECT_EQ(items.size(), 1U);
  return items[0].asDictionary();
}

TEST(SimulatedProcessor, IsTheSingleItemOfAReport) {
  const Dictionary item = itemOf(R"({"chip_type": "Apple M1", "machine_name": "Notebook"})");
  EXPECT_EQ(item.size(), 2U);
  EXPECT_EQ(item.find("chip_type").asText(), "Apple M1");
  EXPECT_EQ(itemOf("{}").size(), 0U);
}

TEST(SimulatedProcessor, KeepsEveryCharacter) {
  const Dictionary item = itemOf(R"({"a<&>\"'": " <key>&amp;]]>\"' \t\r\n\u00e9\ud83d\ude00 "})");
  EXPECT_EQ(item.find("a<&>\"'").asText(), " <key>&amp;]]>\"' \t\r\n\xC3\xA9\xF0\x9F\x98\x80 ");
}

TEST(SimulatedProcessor, EscapesACarriageReturn) {
  const auto machine = machineOf("{}", R"("processor": {"cpu_type": "a\rb"}, )");
  const std::string report = machine->outputOfCommand(kReportCommand).value();
  EXPECT_NE(report.find("<string>a&#13;b</string>"), std::string::npos) << report;
}

TEST(SimulatedProcessor, MayHaveNumbersAndFlags) {
  const Dictionary item = itemOf(
      R"({"integer": 12, "real": 0.1234567890123456, "large": 1e300, "yes": true, "no": false, "empty": ""})");
  EXPECT_EQ(item.find("integer").asNumber().uint64Value(), 12U);
  EXPECT_EQ(item.find("real").asNumber().float64Value(), 0.1234567890123456);
  EXPECT_EQ(item.find("large").asNumber().float64Value(), 1e300);
  EXPECT_EQ(item.find("yes").asNumber().int32Value(), 1);
  EXPECT_EQ(item.find("no").asNumber().int32Value(), 0);
  EXPECT_EQ(item.find("empty").kind(), Value::Kind::text);
}

TEST(SimulatedProcessor, IsIgnoredIfCommandsHaveTheReport) {
  const auto machine = machineOf("{}", R"("processor": {"cpu_type": "a"}, "commands": {")" +
                                           kReportCommand + R"(": {"output": "none"}}, )");
  EXPECT_EQ(machine->outputOfCommand(kReportCommand), "none");
}

}  // namespace
}  // namespace halvermonte
