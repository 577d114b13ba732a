#include "monitor/list/SensorList.hpp"

#include <gmock/gmock.h>

#include <sstream>
#include <string>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

/// The list of a machine in the tick.
std::string listOf(const std::string& tick, const std::string& members = "") {
  Sampling sampling({.machine = machineOf(tick, members), .title = "Sample, simulated"});
  return sensorList(sampling);
}

/// The one line that has the text; "" if there is none.
std::string lineWith(const std::string& list, const std::string& text) {
  std::istringstream lines(list);
  std::string found;
  for (std::string line; std::getline(lines, line);) {
    if (line.find(text) == line.npos) continue;
    EXPECT_EQ(found, "") << text << " has two lines";
    found = line;
  }
  return found;
}

TEST(SensorList, BeginsWithTheMachineAndAHeading) {
  EXPECT_THAT(listOf("{}"), StartsWith("Sample, simulated\n\nkey  name  source  reading\n"));
}

TEST(SensorList, HIDSensorHasTheNameThatItsReadingIsShownUnder) {
  const std::string list = listOf(R"({"hid": {"temperature": [
      {"product": "Tg1b", "value": 41.5}, {"product": "Tg1b 2", "value": 42},
      {"product": "pACC MTR 1", "value": 1}, {"product": "eACC MTR 2", "value": 2},
      {"product": "GPU MTR 3", "value": 3}, {"product": "PMU GPU MTR", "value": 4},
      {"product": "PMU GPU MTR 5", "value": 5}]}})");
  const auto line = [&](const std::string& product) { return lineWith(list, product); };
  EXPECT_THAT(line("\"Tg1b\""), MatchesRegex("- +Power Management Unit +HID temp.* 41.500000"));
  EXPECT_THAT(line("\"Tg1b 2\""), HasSubstr(" not shown by itself "));
  EXPECT_THAT(line("\"pACC MTR 1\""), HasSubstr(" CPU Performance Cores "));
  EXPECT_THAT(line("\"eACC MTR 2\""), HasSubstr(" CPU Efficiency Cores "));
  EXPECT_THAT(line("\"GPU MTR 3\""), HasSubstr(" GPU Cluster "));
  EXPECT_THAT(line("\"PMU GPU MTR\""), HasSubstr(" not shown by itself "));
  EXPECT_THAT(line("\"PMU GPU MTR 5\""), HasSubstr(" not shown by itself "));
}

TEST(SensorList, HIDSensorsOfEachKindAreListedAlsoWithoutProductOrEvent) {
  const std::string list = listOf(R"({"hid": {
      "temperature": [{"value": 7}], "current": [{"product": "Tg1b", "value": 0.25}],
      "voltage": [{"product": "PMU vbat"}]}})");
  EXPECT_THAT(lineWith(list, "\"Unknown\""), MatchesRegex("- .*HID temperature .* 7.000000"));
  EXPECT_THAT(lineWith(list, "\"Tg1b\""), MatchesRegex("- +not shown .*HID current .* 0.250000"));
  EXPECT_THAT(lineWith(list, "\"PMU vbat\""), MatchesRegex("- +not .*HID voltage .* no event"));
  const std::string without =
      listOf(R"({"hid": {"temperature": null, "current": null, "voltage": [{}]}})");
  EXPECT_THAT(lineWith(without, "HID"), HasSubstr("HID voltage \"Unknown\""));
}

TEST(SensorList, KeyHasItsDisplayNameOrWhatItStandsFor) {
  const std::string list = listOf(tickOfKeys(
      R"("TC0P": {"type": "sp78", "value": 40}, "ZC0P": {"type": "sp78", "value": 20},
         "FNum": {"type": "ui8 ", "value": 1}, "F0Ac": {"type": "fpe2", "value": 900},
         "F0ID": {"type": "{fds", "name": "Left"}, "F9Ac": {"type": "fpe2", "value": 1},
         "F:Ac": {"type": "fpe2", "value": 1}, "F/Ac": {"type": "fpe2", "value": 1},
         "G0Ac": {"type": "fpe2", "value": 1}, "F0Mx": {"type": "fpe2", "value": 5000},
         "Zzzz": {"type": "ch8*", "bytes": "0a0B"}, "Zzz0": {"type": "ui8 ", "bytes": ""},
         "Zzz1": {"type": "ui8 ", "value": 1, "readCode": 5})"));
  EXPECT_THAT(lineWith(list, "TC0P"), MatchesRegex("TC0P  CPU 1 Proximity +SMC sp78  2800"));
  EXPECT_THAT(lineWith(list, "FNum"), MatchesRegex("FNum  \\(number of fans\\) +SMC ui8   01"));
  EXPECT_THAT(lineWith(list, "F0Ac"), HasSubstr("  Left (fan) "));
  EXPECT_THAT(lineWith(list, "F9Ac"), HasSubstr("  Fan 10 (fan) "));
  EXPECT_THAT(lineWith(list, "F0ID"), HasSubstr("  (name of a fan) "));
  for (const char* key : {"F:Ac", "F/Ac", "G0Ac", "F0Mx", "ZC0P"}) {
    EXPECT_THAT(lineWith(list, key), HasSubstr("  no name on this processor ")) << key;
  }
  EXPECT_THAT(lineWith(list, "Zzzz"), MatchesRegex("Zzzz .* SMC ch8\\*  0a0b"));
  EXPECT_THAT(lineWith(list, "Zzz0"), MatchesRegex("Zzz0 .*  no reading"));
  EXPECT_THAT(lineWith(list, "Zzz1"), MatchesRegex("Zzz1 .*  no reading"));
}

TEST(SensorList, KeyThatTheMachineAddsHasItsName) {
  const std::string list = listOf(tickOfKeys(R"("Xa00": {"type": "sp78", "value": 40},
                                                "TP0P": {"type": "sp78", "value": 40},
                                                "Tp0n": {"type": "sp78", "value": 40})"),
                                  R"("names": [["Xa00", "Samsung SSD"]], )");
  EXPECT_THAT(lineWith(list, "Xa00"), MatchesRegex("Xa00  Samsung SSD +SMC sp78  2800"));
  EXPECT_THAT(lineWith(list, "TP0P"), HasSubstr("  PCH Proximity (not sampled) "));
  EXPECT_THAT(lineWith(list, "Tp0n"), HasSubstr("  no name on this processor "));
}

TEST(SensorList, ReadingOfAKeyIsAtMostThe32BytesOfAReply) {
  const std::string list =
      listOf(tickOfKeys(R"("Zzzz": {"type": "ch8*", "bytes": "0102", "size": 40})"));
  EXPECT_THAT(lineWith(list, "Zzzz"), MatchesRegex(".*  0102" + std::string(60, '0')));
}

TEST(SensorList, HasNoKeysWhenTheControllerCannotBeOpened) {
  const std::string list =
      listOf(R"({"smc": {"service": "refused", "keys": {"TC0P": {"type": "sp78", "value": 40}}}})");
  EXPECT_EQ(lineWith(list, "TC0P"), "");
}

TEST(SensorList, DrivesAreNumberedAndThoseThatCannotBeReadSaySo) {
  const std::string list = listOf(
      R"-({"drives": [{"Bytes (Read)": 10, "Bytes (Write)": 20}, {}, null, "unreadable"]})-");
  const auto line = [&](const char* drive) { return lineWith(list, drive); };
  EXPECT_THAT(line("drive 1"), MatchesRegex("- +Disks +drive 1 +10 bytes read, 20 written"));
  EXPECT_THAT(line("drive 2"), MatchesRegex("- +Disks +drive 2 +0 bytes read, 0 written"));
  EXPECT_THAT(line("drive 3"), MatchesRegex("- +Disks +drive 3 +no statistics"));
  EXPECT_THAT(line("drive 4"), MatchesRegex("- +Disks +drive 4 +unreadable"));
  EXPECT_EQ(line("drive 5"), "");
}

TEST(SensorList, ColumnsAreAsWideAsTheirWidestCell) {
  const std::string list = listOf(R"({"hid": {"temperature": [
      {"product": "\u6e29\u5ea6", "value": 1}, {"product": "Tg1b", "value": 2}]}})");
  EXPECT_THAT(
      list,
      HasSubstr(
          "\n"
          "key  name                   source                  reading\n"
          "-    not shown by itself    HID temperature \"\xE6\xB8\xA9\xE5\xBA\xA6\"  1.000000\n"
          "-    Power Management Unit  HID temperature \"Tg1b\"  2.000000\n"));
}

}  // namespace
}  // namespace halvermonte
