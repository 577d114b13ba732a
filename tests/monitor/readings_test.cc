#include "monitor/Readings.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Each as "name value", the marked ones with a star.
std::vector<std::string> texts(const std::vector<Reading>& readings) {
  std::vector<std::string> texts;
  for (const Reading& reading : readings) {
    texts.push_back((reading.isMarked ? "*" : "") + reading.name + " " + reading.value);
  }
  return texts;
}

StatisticsData& withFull(StatisticsData& record, std::string_view names, std::string_view values) {
  record.setSensors_temperature(Text(names));
  record.setSensors_temperatureData(Text(values));
  return record;
}

StatisticsData& withShort(StatisticsData& record, std::string_view names, std::string_view values) {
  record.setSensors_temperatureMini(Text(names));
  record.setSensors_temperatureMiniData(Text(values));
  return record;
}

TEST(TemperatureReadings, EqualNamesAreAllKept) {
  StatisticsData record;
  withFull(record, "Core\nCore\n", "40\n41\n");
  EXPECT_THAT(texts(temperatureReadings(record)), ElementsAre("Core 40", "Core 41"));
}

TEST(TemperatureReadings, NamesOfTheShortListAreMarkedAndComeFirst) {
  StatisticsData record;
  withFull(record, "Bank\nGPU\nCPU\n", "30\n50\n60\n");
  withShort(record, "CPU\nBattery\nGPU\nBattery\n", "55\n31\n50\n32\n");
  EXPECT_THAT(texts(temperatureReadings(record)),
              ElementsAre("*GPU 50", "*CPU 60", "*Battery 31", "*Battery 32", "Bank 30"))
      << "the full list's value is the one that is shown";
}

TEST(TemperatureReadings, LinesWithoutAPartnerAreLeftOut) {
  StatisticsData record;
  withFull(record, "A\nB\nC\n", "1\n2\n");
  EXPECT_THAT(texts(temperatureReadings(record)), ElementsAre("A 1", "B 2"));
}

TEST(TemperatureReadings, AbsentTextsHaveNone) {
  StatisticsData record;
  record.setSensors_temperature(Text());
  record.setSensors_temperatureMini(Text());
  EXPECT_THAT(temperatureReadings(record), IsEmpty());
}

TEST(FanReadings, NotApplicableIsNoFan) {
  StatisticsData record;
  record.setSensors_fans(Text("n/a"));
  EXPECT_THAT(fanReadings(record), IsEmpty());
  record.setSensors_fans(Text("Left\n\n"));
  record.setSensors_fansData(Text("1200\n0\n"));
  EXPECT_THAT(texts(fanReadings(record)), ElementsAre("Left 1200", " 0")) << "a name may be empty";
}

TEST(TemperatureText, ConvertsToWholeFahrenheit) {
  EXPECT_EQ(temperatureText("47", false, true), "47 °C");
  EXPECT_EQ(temperatureText("47", true, true), "117 °F") << "116.6";
  EXPECT_EQ(temperatureText("-40", true, true), "-40 °F");
  EXPECT_EQ(temperatureText("0", true, false), "32 F");
  EXPECT_EQ(temperatureText("2147483647", true, true), "3865470597 °F");
}

TEST(TemperatureText, WhatIsNoNumberStaysAsItIs) {
  EXPECT_EQ(temperatureText("", true, true), "");
  EXPECT_EQ(temperatureText("4x", true, true), "4x");
  EXPECT_EQ(temperatureText("99999999999999999999", true, true), "99999999999999999999");
}

TEST(FanText, StandstillIsSaid) {
  EXPECT_EQ(fanText("0"), "stopped");
  EXPECT_EQ(fanText("1200"), "1200 rpm");
}

}  // namespace
}  // namespace halvermonte
