#include "monitor/list/SensorList.hpp"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

Sampling samplingOf(const std::string& tick, const std::string& members = "") {
  return Sampling({.machine = machineOf(tick, members), .title = "Sample, simulated"});
}

/// The list of a machine in the tick.
std::string listOf(const std::string& tick, const std::string& members = "",
                   const Options& options = {}) {
  Sampling sampling = samplingOf(tick, members);
  return sensorList(sampling, options);
}

std::string jsonOf(const std::string& tick, const std::string& members = "") {
  Sampling sampling = samplingOf(tick, members);
  return sensorListJson(sampling);
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

constexpr const char* kMixed =
    R"-({"smc": {"keys": {"TC0P": {"type": "sp78", "value": 40.25},
                          "TB0T": {"type": "sp78", "value": 30},
                          "FNum": {"type": "ui8 ", "value": 1},
                          "F0Ac": {"type": "fpe2", "value": 1200}}},
         "hid": {"temperature": [{"product": "NAND CH0 temp", "value": 33.26}],
                 "voltage": [{"product": "PMU vbat", "value": 12.3456}]},
         "drives": [{"Bytes (Read)": 1500000, "Bytes (Write)": 20}]})-";

TEST(SensorList, BeginsWithTheMachineAndAHeading) {
  EXPECT_THAT(listOf("{}"),
              StartsWith("Sample, simulated\n\n  name  reading  key  source  raw  shown\n"));
}

TEST(SensorList, SensorsStandBelowTheirGroup) {
  std::istringstream lines(listOf(kMixed));
  std::vector<std::string> firstWords;
  for (std::string line; std::getline(lines, line);) {
    const std::string word = line.substr(0, line.find("  ", 2));
    if (!word.empty()) firstWords.push_back(word);
  }
  EXPECT_THAT(firstWords, ::testing::ElementsAre("Sample, simulated", "  name", "Fans", "  Fan 1",
                                                 "CPU", "  CPU 1 Proximity", "Drives",
                                                 "  SSD NAND I/O", "Power", "  Battery TS_MAX",
                                                 "Other", "  -", "  -", "Disks", "  Disks"));
}

TEST(SensorList, ReadingHasItsUnitBesideItsRawForm) {
  const std::string list = listOf(kMixed);
  EXPECT_THAT(lineWith(list, "TC0P"),
              MatchesRegex("  CPU 1 Proximity +40\\.25 °C +TC0P +SMC sp78 +2840 +full list"));
  EXPECT_THAT(lineWith(list, "F0Ac"),
              MatchesRegex("  Fan 1 +1200 rpm +F0Ac +SMC fpe2 +12c0 +fans"));
  EXPECT_THAT(lineWith(list, "vbat"),
              MatchesRegex("  - +12\\.346 V +- +HID voltage \"PMU vbat\" +- +no: not shown by.*"));
  EXPECT_THAT(lineWith(list, "FNum"), MatchesRegex("  - +- +FNum .* 01 +no: the number of fans"));
}

TEST(SensorList, ShownSensorWithoutAReadingSaysWhy) {
  const std::string list = listOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 1, "readCode": 5},
                    "TI0P": {"type": "sp78", "value": 1, "readCode": 5})"));
  EXPECT_THAT(lineWith(list, "TC0P"), HasSubstr("  full list; no reading"));
  EXPECT_THAT(lineWith(list, "TI0P"), HasSubstr("  short list; no reading"));
}

TEST(SensorList, TemperaturesAreInFahrenheitOnRequest) {
  Options options;
  options.fahrenheit = true;
  const std::string list = listOf(kMixed, "", options);
  EXPECT_THAT(lineWith(list, "TC0P"), HasSubstr("  104.45 °F  "));
  EXPECT_THAT(lineWith(list, "F0Ac"), HasSubstr("  1200 rpm  "));
}

TEST(SensorList, HasNoControlCharactersOfTheMachine) {
  const std::string members = R"("names": [["Xa00", "Red\u001b[31mSSD"]], )";
  const std::string tick = tickOfKeys(R"("Xa00": {"type": "sp78", "value": 40})");
  EXPECT_THAT(listOf(tick, members), AllOf(HasSubstr("  Red?[31mSSD  "), Not(HasSubstr("\033"))));
}

TEST(SensorList, DrivesAreNumberedAndThoseThatCannotBeReadSaySo) {
  const std::string list = listOf(
      R"-({"drives": [{"Bytes (Read)": 1000, "Bytes (Write)": 2000}, {}, null, "unreadable"]})-");
  const auto line = [&](const char* drive) { return lineWith(list, drive); };
  EXPECT_THAT(line("drive 1"),
              MatchesRegex("  Disks  1 KB read, 2 KB written +- +drive 1 +1000 2000 +disks"));
  EXPECT_THAT(line("drive 2"), HasSubstr("Zero KB read, Zero KB written"));
  EXPECT_THAT(line("drive 3"), MatchesRegex("  Disks +- +- +drive 3 +- +no: no statistics"));
  EXPECT_THAT(line("drive 4"), MatchesRegex("  Disks +- +- +drive 4 +- +no: unreadable"));
  EXPECT_EQ(line("drive 5"), "");
}

TEST(SensorList, WalkOverTheDrivesThatFailsSaysWhy) {
  EXPECT_THAT(lineWith(listOf(R"({"drives": [{}], "drivesRaise": "gone"})"), "Disks  "),
              MatchesRegex("  Disks +- +- +drives +- +no: gone"));
}

TEST(SensorList, ColumnsAreAsWideAsTheirWidestCell) {
  const std::string list = listOf(R"({"hid": {"temperature": [
      {"product": "\u6e29\u5ea6", "value": 1}, {"product": "Tg1b", "value": 2}]}})");
  EXPECT_THAT(
      list,
      HasSubstr("  name                   reading  key  source                  raw  shown\n"
                "Power\n"
                "  Power Management Unit  2 °C     -    HID temperature \"Tg1b\"  -    full list\n"
                "Other\n"
                "  -                      1 °C     -    HID temperature \"温度\"  -    no: not "));
}

TEST(SensorListJson, IsOneLineWithTheSensorsAndDrivesInTheMachinesOrder) {
  EXPECT_EQ(jsonOf("{}"), "{\"machine\":\"Sample, simulated\",\"sensors\":[],\"drives\":[]}\n");
  EXPECT_EQ(
      jsonOf(R"-({"smc": {"keys": {"TC0P": {"type": "sp78", "value": 40.25},
                                   "Zzz0": {"type": "ui8 ", "bytes": ""}}},
                  "drives": [{"Bytes (Read)": 10}, null]})-"),
      R"({"machine":"Sample, simulated","sensors":[)"
      R"({"name":"CPU 1 Proximity","shownIn":"fullList","group":"CPU","key":"TC0P","driver":"",)"
      R"("source":"SMC sp78","label":"","quantity":"temperature","number":40.25,"unit":"°C",)"
      R"("raw":"2840","reason":""},)"
      R"({"name":"","shownIn":"nothing","group":"Other","key":"Zzz0","driver":"",)"
      R"("source":"SMC ui8","label":"","quantity":"","number":null,"unit":"",)"
      R"("raw":"","reason":"no name on this processor; no reading"}],)"
      R"("drives":[{"source":"drive 1","bytesRead":10,"bytesWritten":0,"reason":""},)"
      R"({"source":"drive 2","bytesRead":null,"bytesWritten":null,"reason":"no statistics"}]})"
      "\n");
}

TEST(SensorListJson, NamesTheListsAndFans) {
  const std::string json = jsonOf(tickOfKeys(
      R"("TI0P": {"type": "sp78", "value": 40}, "F0Ac": {"type": "fpe2", "value": 900})"));
  EXPECT_THAT(json, HasSubstr(R"("name":"Thunderbolt 0","shownIn":"shortList")"));
  EXPECT_THAT(json, HasSubstr(R"("name":"Fan 1","shownIn":"fans","group":"Fans")"));
}

/// The names in the first column of each of the page's tables.
std::vector<std::vector<std::string>> documentedMembers() {
  std::ifstream page(DOCUMENTATION_OF_LIST);
  std::vector<std::vector<std::string>> tables;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("| member ")) tables.emplace_back();
    if (line.starts_with("| `")) {
      tables.back().push_back(line.substr(3, line.find('`', 3) - 3));
    }
  }
  return tables;
}

std::vector<std::string> membersOf(std::string json) {
  const std::regex member("\"([a-zA-Z]+)\":");
  std::vector<std::string> members;
  for (std::smatch match; std::regex_search(json, match, member); json = match.suffix()) {
    members.push_back(match[1]);
  }
  return members;
}

TEST(SensorListJson, HasTheMembersOfItsPageInTheirOrder) {
  const auto tables = documentedMembers();
  ASSERT_EQ(tables.size(), 3u);
  ASSERT_THAT(tables[0], ::testing::ElementsAre("machine", "sensors", "drives"));
  std::vector<std::string> expected = {"machine", "sensors"};
  expected.insert(expected.end(), tables[1].begin(), tables[1].end());
  expected.push_back("drives");
  expected.insert(expected.end(), tables[2].begin(), tables[2].end());
  EXPECT_EQ(membersOf(jsonOf(R"({"hid": {"temperature": [{}]}, "drives": [{}]})")), expected);
}

}  // namespace
}  // namespace halvermonte
