// The texts and dictionaries that a pass leaves in the record.
#include <gtest/gtest.h>

#include "tests/engine/Records.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

TEST(Report, IsTwoTextsOfLinesAndADictionaryOfThem) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("pACC MTR", 52), sensor("GPU MTR", 44)});
  Sampler sampler(machine);
  sampler.pass();
  const StatisticsData& record = *sampler.record();
  EXPECT_EQ(record.sensors_temperature(), "CPU Performance Cores\nGPU Cluster\n");
  EXPECT_EQ(record.sensors_temperatureData(), "52\n44\n");
  EXPECT_EQ(record.sensors_temperatureMini(), "CPU Performance Cores\nGPU Cluster\n");
  EXPECT_EQ(record.sensors_temperatureMiniData(), "52\n44\n");
  EXPECT_EQ(entriesOf(record.sensors()),
            Entries({{"CPU Performance Cores", "52"}, {"GPU Cluster", "44"}}));
}

TEST(Report, OfOneEntryMakesADictionaryOfOne) {
  TestMachine machine;
  machine.keys["TL0P"] = sp78(33);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.record()->sensors_temperature(), "LCD Proximity\n");
  EXPECT_EQ(sampler.record()->sensors_temperatureData(), "33\n");
  EXPECT_EQ(entriesOf(sampler.record()->sensors()), Entries({{"LCD Proximity", "33"}}));
}

TEST(Report, OfNothingIsEmptyTextsAndTheDictionaryOfBefore) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Tg1b", 31)});
  Sampler sampler(machine);
  sampler.pass();
  machine.setTemperatureSensors({});
  sampler.pass();
  const StatisticsData& record = *sampler.record();
  EXPECT_EQ(record.sensors_temperature(), "");
  EXPECT_EQ(record.sensors_temperatureData(), "");
  EXPECT_EQ(record.sensors_temperatureMini(), "");
  EXPECT_EQ(record.sensors_temperatureMiniData(), "");
  EXPECT_EQ(entriesOf(record.sensors()), Entries({{"Power Management Unit", "31"}}));
}

TEST(Report, OfNothingLeavesTheDefaultsOfAFreshRecord) {
  TestMachine machine;
  Sampler sampler(machine);
  const Dictionary fans = sampler.record()->fans();
  sampler.pass();
  EXPECT_EQ(sampler.record()->sensors().size(), 0U);
  EXPECT_TRUE(sampler.record()->sensors());
  EXPECT_TRUE(sampler.record()->fans().isSame(fans));
}

TEST(Report, ReplacesTheDictionaryAsAWhole) {
  TestMachine machine;
  machine.keys["TL0P"] = sp78(33);
  Sampler sampler(machine);
  sampler.pass();
  const Dictionary before = sampler.record()->sensors();
  machine.keys.erase("TL0P");
  machine.keys["TW0P"] = sp78(20);
  for (int pass = 0; pass < 10; ++pass) sampler.pass();  // the screen fades and drops out
  EXPECT_EQ(entriesOf(before), Entries({{"LCD Proximity", "33"}}));
  EXPECT_EQ(entriesOf(sampler.record()->sensors()), Entries({{"Airport Proximity", "20"}}));
}

TEST(Report, KnowsNoFahrenheit) {
  TestMachine machine;
  machine.keys["TL0P"] = sp78(100);
  machine.keys["TI0P"] = sp78(100);
  Sampler sampler(machine);
  sampler.record()->setSensors_settingsIsFarenheit(1);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"LCD Proximity", "100"}}));
  EXPECT_EQ(sampler.mini(), Entries({{"Thunderbolt 0", "100"}}));
  EXPECT_EQ(sampler.record()->sensors_settingsIsFarenheit(), 1);
}

TEST(Report, WritesNoPropertyThatIsNotTheEngines) {
  TestMachine machine;
  machine.keys["TL0P"] = sp78(100);
  Sampler sampler(machine);
  StatisticsData& record = *sampler.record();
  record.setSensors_version(Number::ofInt32(7));
  record.setCpu_power(Number::ofInt32(8));
  record.setHostName(Text("mine"));
  const Date updated = record.appsUpdateTime();
  machine.now += 5;
  sampler.pass();
  EXPECT_EQ(record.sensors_version().int32Value(), 7);
  EXPECT_EQ(record.cpu_power().int32Value(), 8);
  EXPECT_EQ(record.hostName(), "mine");
  EXPECT_TRUE(record.appsUpdateTime().isSame(updated));
}

struct Lines {
  const char* behaviour;
  const char* names;
  const char* values;
  std::optional<Entries> sensors;  ///< absent: the dictionary stays as it was
  std::optional<Entries> fans;
};

/// What a pass makes of a record's texts, for the temperatures and for the fans.
class ReportDictionaries : public testing::TestWithParam<Lines> {
 protected:
  /// The pass's sensors and fans over a record that answers with the lines.
  std::pair<Entries, Entries> dictionaries() {
    TestMachine machine;
    const ScopedMachine scope(machine);
    HalvermonteSensorsEngine engine;
    const auto record = std::make_shared<DivertingRecord>();
    const Dictionary former({{Text("former"), Text("1")}});
    record->setSensors(former);
    record->setFans(former);
    record->temperatures = record->fanNames = Text(GetParam().names);
    record->temperatureValues = record->fanValues = Text(GetParam().values);
    engine.getSensorsInfo(record);
    return {entriesOf(record->sensors()), entriesOf(record->fans())};
  }
  const Entries former_ = {{"former", "1"}};
};

TEST_P(ReportDictionaries, TakeLinesInPairs) {
  const auto [sensors, fans] = dictionaries();
  EXPECT_EQ(sensors, GetParam().sensors.value_or(former_)) << GetParam().behaviour;
  EXPECT_EQ(fans, GetParam().fans.value_or(former_)) << GetParam().behaviour;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ReportDictionaries,
    testing::Values(Lines{"no line", "", "", {}, {}},
                    Lines{"a piece without a line end", "n/a", "5", {}, {}},
                    Lines{"one line", "A\n", "5\n", Entries{{"A", "5"}}, Entries{{"A", "5"}}},
                    Lines{"what follows the last line feed is no line", "A\nB", "5\n6",
                          Entries{{"A", "5"}}, Entries{{"A", "5"}}},
                    Lines{"fewer values", "A\nB\n", "5\n", {}, {}},
                    Lines{"fewer names", "A\n", "5\n6\n", {}, {}},
                    Lines{"names without values", "A\nB\n", "", {}, {}},
                    Lines{"an empty name", "\nB\n", "5\n6\n", Entries{{"B", "6"}},
                          Entries{{"", "5"}, {"B", "6"}}},
                    Lines{"nothing but an empty name", "\n", "5\n", Entries{}, Entries{{"", "5"}}},
                    Lines{"a name twice", "A\nB\nA\n", "5\n6\n7\n", Entries{{"A", "7"}, {"B", "6"}},
                          Entries{{"A", "7"}, {"B", "6"}}},
                    Lines{"an empty value", "A\n", "\n", Entries{{"A", ""}}, Entries{{"A", ""}}}));

}  // namespace
}  // namespace halvermonte::test
