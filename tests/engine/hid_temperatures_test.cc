// Temperatures of the HID event system: group averages, then the sensors that have a display name.
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// What a pass shows of these sensors alone.
struct Shown {
  Entries full;
  Entries mini;
};
Shown shown(HIDServices sensors) {
  TestMachine machine;
  machine.setTemperatureSensors(std::move(sensors));
  Sampler sampler(machine);
  sampler.pass();
  return {sampler.full(), sampler.mini()};
}

/// Sensors that only count.
HIDServices unknownSensors(size_t count) {
  HIDServices list;
  for (size_t i = 0; i < count; ++i) list.push_back(sensor("PMU tdie" + std::to_string(i), 30));
  return list;
}

HIDServices joined(HIDServices first, const HIDServices& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

/// Four sensors that have a display name.
HIDServices fourKnown() {
  return {sensor("Tg1b", 31), sensor("NAND CH0 temp", 32), sensor("gas gauge battery", 33),
          sensor("ANE MTR Temp Sensor1", 34)};
}
const Entries kFourKnown = {{"Power Management Unit", "31"},
                            {"SSD NAND I/O", "32"},
                            {"Gas Gauge Battery", "33"},
                            {"Neural Engine", "34"}};
Entries firstOfFour(int count) { return Entries(kFourKnown.begin(), kFourKnown.begin() + count); }

TEST(HIDTemperatures, AreNoneOnAComputerWithoutSuchSensors) {
  TestMachine machine;
  machine.keys["TW0P"] = sp78(40);
  machine.keys["TB0T"] = sp78(30);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Airport Proximity", "40"}, {"Battery TS_MAX", "30"}}));
  EXPECT_EQ(sampler.mini(), Entries({{"Battery", "30"}, {"Enclosure", "30"}, {"Wi-Fi", "40"}}));
}

TEST(HIDTemperatures, AreNoneIfTheEventSystemHasNoList) {
  TestMachine machine;
  machine.sensors[HIDSensorKind::temperature] = nullptr;
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries());
  EXPECT_EQ(sampler.mini(), Entries());
}

struct Relabel {
  const char* product;
  const char* name;
};

class RelabelledSensor : public testing::TestWithParam<Relabel> {};

TEST_P(RelabelledSensor, IsShownUnderItsDisplayName) {
  EXPECT_EQ(shown({sensor(GetParam().product, 42.9)}).full, Entries({{GetParam().name, "42"}}));
}

TEST_P(RelabelledSensor, IsKnownByItsExactProductAlone) {
  std::string product = GetParam().product;
  const Shown others = shown({sensor(product + " ", 42), sensor(" " + product, 42),
                              sensor(product.substr(1), 42), sensor(GetParam().name, 42)});
  EXPECT_EQ(others.full, Entries());
}

INSTANTIATE_TEST_SUITE_P(Products, RelabelledSensor,
                         testing::Values(Relabel{"Tg1b", "Power Management Unit"},
                                         Relabel{"NAND CH0 temp", "SSD NAND I/O"},
                                         Relabel{"gas gauge battery", "Gas Gauge Battery"},
                                         Relabel{"SOC MTR Temp Sensor0", "M1 SOC Sensor 1"},
                                         Relabel{"SOC MTR Temp Sensor1", "M1 SOC Sensor 2"},
                                         Relabel{"SOC MTR Temp Sensor2", "M1 SOC Sensor 3"},
                                         Relabel{"ANE MTR Temp Sensor1", "Neural Engine"},
                                         Relabel{"ISP MTR Temp Sensor5",
                                                 "Image Signal Processor"}));

TEST(HIDTemperatures, AreNotShownForProductsWithoutADisplayName) {
  EXPECT_EQ(shown({sensor("tg1b", 40), sensor("PMU tdie1", 40), sensor("", 40),
                   sensorWithoutProduct(40), sensor("SOC MTR Temp Sensor3", 40),
                   sensor("Avg:SOC", 40), sensor("Min:SOC", 40), sensor("Max:SOC", 40)})
                .full,
            Entries());
}

struct Edge {
  double reading;
  const char* value;  ///< "": not shown
};

class HIDRange : public testing::TestWithParam<Edge> {};

TEST_P(HIDRange, Is0To110ForOneSensor) {
  const auto& [reading, value] = GetParam();
  const Entries expected = *value == '\0' ? Entries() : Entries({{"Power Management Unit", value}});
  // The sensors beside it leave it room in the mini list.
  const Shown all = shown(joined({sensor("Tg1b", reading)}, unknownSensors(8)));
  EXPECT_EQ(all.full, expected) << reading;
  EXPECT_EQ(all.mini, expected) << reading;
}

INSTANTIATE_TEST_SUITE_P(Edges, HIDRange,
                         testing::Values(Edge{0, "0"}, Edge{0.9, "0"}, Edge{-0.9, "0"},
                                         Edge{-1, ""}, Edge{-1.5, ""}, Edge{1, "1"},
                                         Edge{109.99, "109"}, Edge{110, "110"}, Edge{110.99, "110"},
                                         Edge{111, ""}, Edge{1e300, ""}, Edge{-1e300, ""},
                                         Edge{2147483648.0, ""},
                                         Edge{std::numeric_limits<double>::quiet_NaN(), "0"},
                                         Edge{std::numeric_limits<double>::infinity(), ""},
                                         Edge{-std::numeric_limits<double>::infinity(), ""}));

TEST(HIDTemperatures, CountASensorWithoutAnEventAsZero) {
  EXPECT_EQ(shown({sensorWithoutEvent("Tg1b")}).full, Entries({{"Power Management Unit", "0"}}));
}

struct GroupCase {
  const char* behaviour;
  HIDServices sensors;
  Entries full;
};

class HIDGroup : public testing::TestWithParam<GroupCase> {};

TEST_P(HIDGroup, IsShownAsItsAverage) {
  EXPECT_EQ(shown(GetParam().sensors).full, GetParam().full) << GetParam().behaviour;
}

INSTANTIATE_TEST_SUITE_P(
    Averages, HIDGroup,
    testing::Values(
        GroupCase{"halves go away from zero",
                  {sensor("pACC MTR 1", 40), sensor("pACC MTR 2", 41)},
                  {{"CPU Performance Cores", "41"}}},
        GroupCase{"below a half goes down",
                  {sensor("pACC MTR 1", 40), sensor("pACC MTR 2", 40), sensor("pACC MTR 3", 41)},
                  {{"CPU Performance Cores", "40"}}},
        GroupCase{"members count as whole degrees",
                  {sensor("eACC MTR", 40.9), sensor("eACC MTR", 41.9)},
                  {{"CPU Efficiency Cores", "41"}}},
        GroupCase{"a fixed order, whatever the sensors'",
                  {sensor("GPU MTR Temp Sensor4", 30), sensor("eACC MTR Temp Sensor0", 50),
                   sensor("pACC MTR Temp Sensor2", 60)},
                  {{"CPU Performance Cores", "60"},
                   {"CPU Efficiency Cores", "50"},
                   {"GPU Cluster", "30"}}},
        GroupCase{"a sum of 0 is no entry", {sensor("GPU MTR", 0), sensor("GPU MTR", 0)}, {}},
        GroupCase{"nor is one below", {sensor("GPU MTR", -3)}, {}},
        GroupCase{"nor one that cancels out", {sensor("GPU MTR", -40), sensor("GPU MTR", 40)}, {}},
        GroupCase{"0 counts as a member",
                  {sensor("GPU MTR", 0), sensor("GPU MTR", 40)},
                  {{"GPU Cluster", "20"}}},
        GroupCase{"an average may round to 0",
                  {sensor("GPU MTR", 1), sensor("GPU MTR", 0), sensor("GPU MTR", 0)},
                  {{"GPU Cluster", "0"}}},
        GroupCase{"members have no range",
                  {sensor("eACC MTR", 300), sensor("eACC MTR", -100)},
                  {{"CPU Efficiency Cores", "100"}}},
        GroupCase{"nor has the average", {sensor("GPU MTR", 5000)}, {{"GPU Cluster", "5000"}}},
        GroupCase{"a reading beyond 32 bits saturates",
                  {sensor("GPU MTR", 1e20)},
                  {{"GPU Cluster", "2147483647"}}},
        GroupCase{"sums are 32-bit floats: a degree is lost in 2^24",
                  {sensor("GPU MTR", 16777216), sensor("GPU MTR", 1)},
                  {{"GPU Cluster", "8388608"}}},
        GroupCase{"the prefix is exact", {sensor("pacc MTR", 50), sensor("xGPU MTR", 50)}, {}},
        GroupCase{
            "it does not stand at the end",
            {sensor("PMU pACC MTR", 50), sensor("PMU eACC MTR", 50), sensor("PMU GPU MTR", 50)},
            {}},
        GroupCase{"nor in between",
                  {sensor("PMU pACC MTR 1", 50), sensor("PMU eACC MTR 1", 50),
                   sensor("PMU GPU MTR 1", 50)},
                  {}},
        GroupCase{"the prefix alone is enough", {sensor("GPU MTR", 50)}, {{"GPU Cluster", "50"}}}));

// How many individual sensors the mini list takes. It has no limit for groups.
TEST(MiniBudget, IsOneLessThanTheSensorsUpToSeven) {
  EXPECT_EQ(shown({sensor("Tg1b", 31)}).mini, Entries());
  EXPECT_EQ(shown({sensor("Tg1b", 31), sensor("NAND CH0 temp", 32)}).mini, firstOfFour(1));
  EXPECT_EQ(shown(fourKnown()).mini, firstOfFour(3));
  EXPECT_EQ(shown(fourKnown()).full, kFourKnown);
  EXPECT_EQ(shown(joined(fourKnown(), unknownSensors(1))).mini, kFourKnown);
}

TEST(MiniBudget, IsSevenForMoreThanSevenSensors) {
  const HIDServices eight =
      joined(fourKnown(), {sensor("SOC MTR Temp Sensor0", 35), sensor("SOC MTR Temp Sensor1", 36),
                           sensor("SOC MTR Temp Sensor2", 37), sensor("ISP MTR Temp Sensor5", 38)});
  EXPECT_EQ(shown(eight).full.size(), 8U);
  EXPECT_EQ(shown(eight).mini.size(), 7U);
  EXPECT_EQ(shown(eight).mini.back().first, "M1 SOC Sensor 3");
  EXPECT_EQ(shown(joined(eight, unknownSensors(50))).mini.size(), 7U);
  EXPECT_EQ(shown(HIDServices(eight.begin(), eight.end() - 1)).mini.size(), 6U);
}

TEST(MiniBudget, PaysOneForEachGroup) {
  const HIDServices groups = {sensor("pACC MTR", 60), sensor("eACC MTR", 50),
                              sensor("GPU MTR", 55)};
  const Entries shownGroups = {
      {"CPU Performance Cores", "60"}, {"CPU Efficiency Cores", "50"}, {"GPU Cluster", "55"}};
  // Seven sensors: six, less three.
  const Entries mini = shown(joined(groups, fourKnown())).mini;
  EXPECT_EQ(Entries(mini.begin(), mini.begin() + 3), shownGroups);
  EXPECT_EQ(Entries(mini.begin() + 3, mini.end()), firstOfFour(3));
}

TEST(MiniBudget, IsOverdrawnByGroupsThatAreShownAllTheSame) {
  const Shown all = shown({sensor("pACC MTR", 60), sensor("eACC MTR", 50), sensor("GPU MTR", 55)});
  EXPECT_EQ(all.mini, all.full);
  EXPECT_EQ(all.mini.size(), 3U);
  EXPECT_EQ(shown({sensor("GPU MTR", 55)}).mini, Entries({{"GPU Cluster", "55"}}));
  EXPECT_EQ(shown({sensor("pACC MTR", 60), sensor("Tg1b", 31)}).mini,
            Entries({{"CPU Performance Cores", "60"}}));
}

TEST(MiniBudget, PaysNothingForASensorThatIsNotShown) {
  EXPECT_EQ(shown({sensor("Tg1b", 111), sensor("NAND CH0 temp", 32)}).mini,
            Entries({{"SSD NAND I/O", "32"}}));
}

TEST(HIDTemperatures, AreNotAddedUnderANameThatStandsThereAlready) {
  const Shown twice = shown({sensor("Tg1b", 31), sensor("Tg1b", 32), sensor("NAND CH0 temp", 40),
                             sensor("PMU tdie1", 40)});
  EXPECT_EQ(twice.full, Entries({{"Power Management Unit", "31"}, {"SSD NAND I/O", "40"}}));
  EXPECT_EQ(twice.mini, twice.full);
}

TEST(HIDTemperatures, AreAddedLaterIfTheFirstOfTheNameIsOutOfRange) {
  EXPECT_EQ(shown({sensor("Tg1b", 111), sensor("Tg1b", 111), sensor("Tg1b", 110)}).full,
            Entries({{"Power Management Unit", "110"}}));
}

TEST(HIDTemperatures, StandBeforeTheCatalogues) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Tg1b", 31), sensor("GPU MTR", 44)});
  machine.keys["TA0P"] = sp78(25);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(),
            Entries({{"GPU Cluster", "44"}, {"Power Management Unit", "31"}, {"Airflow 1", "25"}}));
  EXPECT_EQ(sampler.mini(), Entries({{"GPU Cluster", "44"}, {"Airflow (Fans)", "25"}}));
}

TEST(HIDTemperatures, FollowTheListAsItChanges) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.setTemperatureSensors({sensor("Tg1b", 31)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "31"}}));
  machine.setTemperatureSensors({sensor("NAND CH0 temp", 40)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"SSD NAND I/O", "40"}}));
  machine.setTemperatureSensors({});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries());
}

}  // namespace
}  // namespace halvermonte::test
