// The memory of what was reported last, which damps sudden falls.
#include <gtest/gtest.h>

#include "engine/SensorsHistory.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// What one catalogue key shows over the passes of these readings; "" if it is left out.
std::vector<std::string> shownBySMC(const std::vector<double>& readings) {
  TestMachine machine;
  Sampler sampler(machine);
  std::vector<std::string> shown;
  for (const double reading : readings) {
    machine.keys["TL0P"] = flt(static_cast<float>(reading));
    sampler.pass();
    shown.push_back(sampler.full().empty() ? "" : sampler.full().front().second);
  }
  return shown;
}

/// The same for one HID sensor.
std::vector<std::string> shownByHID(const std::vector<double>& readings) {
  TestMachine machine;
  Sampler sampler(machine);
  std::vector<std::string> shown;
  for (const double reading : readings) {
    machine.setTemperatureSensors({sensor("Tg1b", reading)});
    sampler.pass();
    shown.push_back(sampler.full().empty() ? "" : sampler.full().front().second);
  }
  return shown;
}

using Values = std::vector<std::string>;

TEST(DropClamp, ShowsAFallOfMoreThan25DegreesAsOneDegreeAPass) {
  EXPECT_EQ(shownBySMC({70, 40}), Values({"70", "69"}));
  EXPECT_EQ(shownByHID({70, 40}), Values({"70", "69"}));
}

TEST(DropClamp, ShowsAFallOf25DegreesAtOnce) {
  EXPECT_EQ(shownBySMC({70, 45}), Values({"70", "45"}));
  EXPECT_EQ(shownByHID({70, 45}), Values({"70", "45"}));
  EXPECT_EQ(shownBySMC({70, 44}), Values({"70", "69"}));
  EXPECT_EQ(shownByHID({70, 44}), Values({"70", "69"}));
}

TEST(DropClamp, JudgesWholeDegrees) {
  EXPECT_EQ(shownBySMC({70.9, 45.1}), Values({"70", "45"}));
  EXPECT_EQ(shownByHID({70, 44.9}), Values({"70", "69"}));
}

TEST(DropClamp, ShowsARiseAtOnce) {
  EXPECT_EQ(shownBySMC({20, 100}), Values({"20", "100"}));
  EXPECT_EQ(shownByHID({20, 100}), Values({"20", "100"}));
}

TEST(DropClamp, EndsWhenTheReadingComesWithin25DegreesOfWhatIsShown) {
  EXPECT_EQ(shownBySMC({70, 42, 42, 42, 42}), Values({"70", "69", "68", "67", "42"}));
  EXPECT_EQ(shownByHID({70, 42, 42, 42, 42}), Values({"70", "69", "68", "67", "42"}));
}

TEST(DropClamp, LetsASensorFadeWhoseReadingFails) {
  std::vector<double> readings = {50};
  Values expected = {"50"};
  for (int shown = 49; shown >= 25; --shown) {
    readings.push_back(0);
    expected.push_back(std::to_string(shown));
  }
  readings.insert(readings.end(), {0, 0});
  expected.insert(expected.end(), {"", ""});
  EXPECT_EQ(shownBySMC(readings), expected);
}

TEST(DropClamp, RemembersReadingsThatAreNotShown) {
  EXPECT_EQ(shownBySMC({150, 60, 60}), Values({"", "", ""}));
  EXPECT_EQ(shownBySMC({121, 60, 60}), Values({"", "", "119"}));
  EXPECT_EQ(shownByHID({112, 60, 60}), Values({"", "", "110"}));
  EXPECT_EQ(shownByHID({-10, -40, 0}), Values({"", "", "0"}));
}

TEST(DropClamp, RemembersASensorThatWasAwayForAWhile) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.setTemperatureSensors({sensor("Tg1b", 70)});
  sampler.pass();
  machine.setTemperatureSensors({});
  for (int pass = 0; pass < 5; ++pass) sampler.pass();
  machine.setTemperatureSensors({sensor("Tg1b", 20)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "69"}}));
}

// A collapsed sensor whose key is read twice a pass falls twice.
TEST(DropClamp, CountsEveryReadingOfAKeyThatStandsTwice) {
  TestMachine machine;
  machine.keys["Tm0P"] = sp78(70);
  Sampler sampler(machine);
  Values shown;
  for (int pass = 0; pass < 4; ++pass) {
    sampler.pass();
    shown.push_back(sampler.full().at(0).second);
    machine.keys["Tm0P"] = sp78(20);
  }
  EXPECT_EQ(shown, Values({"70", "69", "67", "65"}));
}

TEST(DropClamp, IsKeptPerKeyAndNotPerName) {
  TestMachine machine;
  machine.keys["TG0D"] = sp78(80);
  machine.keys["TG1D"] = sp78(40);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"GPU Die", "80"}}));
  machine.keys["TG0D"] = sp78(60);
  machine.keys["TG1D"] = sp78(41);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"GPU Die", "60"}}));
}

TEST(DropClamp, IsSharedByTwoSensorsOfOneName) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Tg1b", 90), sensor("Tg1b", 40)});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "90"}}));
  // The second sensor left 89, to which 60 is too far a fall.
  machine.setTemperatureSensors({sensor("Tg1b", 60)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "88"}}));
}

TEST(DropClamp, IsKeptUnderTheDisplayName) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Neural Engine", 90)});  // a product of that name
  Sampler sampler(machine);
  sampler.pass();
  machine.setTemperatureSensors({sensor("ANE MTR Temp Sensor1", 40)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Neural Engine", "89"}}));
}

TEST(DropClamp, IsSharedByASensorAndTheKeyOfItsName) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("TL0P", 100)});
  machine.keys["TL0P"] = sp78(40);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"LCD Proximity", "99"}}));
}

TEST(DropClamp, LeavesTheAveragesOfGroupsAlone) {
  TestMachine machine;
  machine.setTemperatureSensors({sensor("GPU MTR", 90)});
  Sampler sampler(machine);
  sampler.pass();
  machine.setTemperatureSensors({sensor("GPU MTR", 20)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"GPU Cluster", "20"}}));
}

TEST(DropClamp, LetsKnownKeysFadeIfTheControllerIsGone) {
  TestMachine machine;
  machine.keys["TL0P"] = sp78(40);
  machine.keys["TW0P"] = sp78(24);
  machine.setTemperatureSensors({sensor("Tg1b", 60)});
  Sampler sampler(machine);
  sampler.pass();
  machine.controller.present = false;
  testing::internal::CaptureStdout();
  for (int shown = 39; shown >= 25; --shown) {
    sampler.pass();
    EXPECT_EQ(sampler.full(),
              Entries({{"Power Management Unit", "60"}, {"LCD Proximity", std::to_string(shown)}}));
    EXPECT_EQ(sampler.mini(), Entries());
  }
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "60"}, {"LCD Proximity", "24"}}));
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "60"}}));
  testing::internal::GetCapturedStdout();
}

/// The rule again, in the widest integers.
struct LiteralClamp {
  std::map<std::string, int64_t> reported;

  int64_t clamped(const std::string& sensor, int64_t v) {
    const auto found = reported.find(sensor);
    if (found != reported.end()) {
      const int64_t p = found->second;
      if (v - p <= -26) v = p - 1;
    }
    reported[sensor] = v;
    return v;
  }
};

TEST(DropClamp, IsTheRuleForEveryPairOfReadings) {
  for (int32_t before = -130; before <= 130; ++before) {
    for (int32_t reading = -160; reading <= 160; ++reading) {
      SensorsHistory history;
      LiteralClamp literal;
      ASSERT_EQ(history.clamped("TC0P", before), literal.clamped("TC0P", before));
      ASSERT_EQ(history.clamped("TC0P", reading), literal.clamped("TC0P", reading))
          << before << " then " << reading;
    }
  }
}

TEST(DropClamp, IsTheRuleAtTheEndsOfTheIntegers) {
  const std::vector<int32_t> ends = {
      INT32_MIN, INT32_MIN + 1,  INT32_MIN + 25, INT32_MIN + 26, -1, 0, 1,
      25,        INT32_MAX - 26, INT32_MAX - 1,  INT32_MAX};
  for (const int32_t before : ends) {
    for (const int32_t reading : ends) {
      SensorsHistory history;
      LiteralClamp literal;
      history.clamped("TC0P", before);
      literal.clamped("TC0P", before);
      EXPECT_EQ(history.clamped("TC0P", reading), literal.clamped("TC0P", reading))
          << before << " then " << reading;
    }
  }
}

}  // namespace
}  // namespace halvermonte::test
