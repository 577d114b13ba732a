// The readings that always go into the mini list.
#include <gtest/gtest.h>

#include <limits>

#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// The mini list of a machine of these keys alone.
Entries miniOf(const std::map<std::string, double>& readings) {
  TestMachine machine;
  for (const auto& [key, degrees] : readings) machine.keys[key] = flt(static_cast<float>(degrees));
  Sampler sampler(machine);
  sampler.pass();
  return sampler.mini();
}

TEST(FixedTemperatures, AreShownUnderTheirMiniNamesInTheirOrder) {
  EXPECT_EQ(miniOf({{"TA0P", 21},
                    {"TA1P", 22},
                    {"TC0P", 23},
                    {"TC0D", 24},
                    {"TG0P", 25},
                    {"TG0D", 26},
                    {"TN0D", 27},
                    {"TM0P", 28},
                    {"TB0T", 29},
                    {"TH0P", 30},
                    {"TB1T", 31},
                    {"TB2T", 32},
                    {"TB3T", 33},
                    {"TW0P", 34},
                    {"TI0P", 35},
                    {"TI1P", 36}}),
            Entries({{"Airflow (Fans)", "21"},
                     {"Airflow (DC-in)", "22"},
                     {"CPU Proximity", "23"},
                     {"CPU Diode", "24"},
                     {"GPU Proximity", "25"},
                     {"GPU Diode", "26"},
                     {"North Bridge", "27"},
                     {"Memory", "28"},
                     {"Battery", "29"},
                     {"HDD", "30"},
                     {"Enclosure", "29"},
                     {"Enclosure 1", "31"},
                     {"Enclosure 2", "32"},
                     {"Enclosure 3", "33"},
                     {"Wi-Fi", "34"},
                     {"Thunderbolt 0", "35"},
                     {"Thunderbolt 1", "36"}}));
}

TEST(FixedTemperatures, OfTheBatteryStandForTheEnclosureToo) {
  EXPECT_EQ(miniOf({{"TB0T", 35}}), Entries({{"Battery", "35"}, {"Enclosure", "35"}}));
}

/// Answers each question for TB0T with a degree more.
class WarmingMachine : public TestMachine {
 public:
  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    if (key == fourCharacterCode("TB0T")) keys["TB0T"] = sp78(degrees_++);
    return TestMachine::smcKeyInfo(key);
  }

 private:
  int degrees_ = 35;
};

TEST(FixedTemperatures, OfTheBatteryAreTwoReadings) {
  WarmingMachine machine;
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.mini(), Entries({{"Battery", "35"}, {"Enclosure", "36"}}));
  EXPECT_EQ(sampler.full(), Entries({{"Battery TS_MAX", "37"}}));
}

struct Edge {
  double reading;
  const char* value;  ///< "": not shown
};

class FixedRange : public testing::TestWithParam<Edge> {};

TEST_P(FixedRange, Is1To109) {
  const auto& [reading, value] = GetParam();
  EXPECT_EQ(miniOf({{"TI0P", reading}}),
            *value == '\0' ? Entries() : Entries({{"Thunderbolt 0", value}}))
      << reading;
}

INSTANTIATE_TEST_SUITE_P(Edges, FixedRange,
                         testing::Values(Edge{0, ""}, Edge{0.99, ""}, Edge{1, "1"}, Edge{-1, ""},
                                         Edge{-0.5, ""}, Edge{-200, ""}, Edge{109, "109"},
                                         Edge{109.9, "109"}, Edge{110, ""}, Edge{1e30, ""},
                                         Edge{-1e30, ""},
                                         Edge{std::numeric_limits<double>::quiet_NaN(), ""}));

TEST(FixedTemperatures, FallAtOnce) {
  TestMachine machine;
  machine.keys["TI0P"] = sp78(90);
  Sampler sampler(machine);
  sampler.pass();
  machine.keys["TI0P"] = sp78(20);
  sampler.pass();
  EXPECT_EQ(sampler.mini(), Entries({{"Thunderbolt 0", "20"}}));
}

TEST(FixedTemperatures, NeedNoRoomInTheBudgetOfTheSensors) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Tg1b", 31)});
  machine.keys["TI0P"] = sp78(20);
  machine.keys["TI1P"] = sp78(21);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.mini(), Entries({{"Thunderbolt 0", "20"}, {"Thunderbolt 1", "21"}}));
}

TEST(FixedTemperatures, AreShownUnderANameThatTheListHasAlready) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("gas gauge battery", 31), sensor("PMU tdie", 31)});
  machine.keys["TB0T"] = sp78(30);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.mini(),
            Entries({{"Gas Gauge Battery", "31"}, {"Battery", "30"}, {"Enclosure", "30"}}));
}

TEST(FixedTemperatures, AreNotInTheFullList) {
  TestMachine machine;
  machine.keys["TI0P"] = sp78(20);  // in the catalogue under no name
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries());
}

}  // namespace
}  // namespace halvermonte::test
