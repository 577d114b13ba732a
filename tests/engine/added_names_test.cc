// Keys and names that a platform adds to the built-in ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

std::vector<std::string> keysOf(const EngineState& state) {
  std::vector<std::string> keys;
  for (const Value& key : state.smcTempKeys) keys.emplace_back(key.asText().str());
  return keys;
}

Text nameOf(const EngineState& state, std::string_view key) {
  return state.smcKeyHumanReadableNames.find(key).asText();
}

TEST(AddedNames, FollowTheBuiltInKeysInTheirOrder) {
  TestMachine machine;
  machine.addedNames = {{"Xb00", "Second"}, {"Xa00", "First"}};
  const Sampler sampler(machine);
  std::vector<std::string> expected = expectedTemperatureKeys();
  expected.insert(expected.end(), {"Xb00", "Xa00"});
  EXPECT_EQ(keysOf(sampler.state()), expected);
  EXPECT_EQ(nameOf(sampler.state(), "Xb00"), "Second");
  EXPECT_EQ(nameOf(sampler.state(), "Xa00"), "First");
}

TEST(AddedNames, ReplaceNoBuiltInKey) {
  TestMachine machine;
  // Read by each pass, read without a name, named only on an M3, not read, and named but unlisted.
  for (const char* key : {"TC0P", "Tp0n", "Tf04", "VC0C", "TP0P"}) {
    machine.addedNames.push_back({key, "Added"});
  }
  const Sampler sampler(machine);
  EXPECT_EQ(keysOf(sampler.state()), expectedTemperatureKeys());
  EXPECT_EQ(nameOf(sampler.state(), "TC0P"), "CPU 1 Proximity");
  EXPECT_EQ(nameOf(sampler.state(), "Tp0n"), "");
  EXPECT_EQ(nameOf(sampler.state(), "Tf04"), "");
  EXPECT_EQ(nameOf(sampler.state(), "VC0C"), "CPU Core 1");
  EXPECT_EQ(nameOf(sampler.state(), "TP0P"), "PCH Proximity");
}

TEST(AddedNames, AreShownAmongTheOthersInTheirOrder) {
  TestMachine machine;
  machine.addedNames = {{"Xa10", "drive 10"}, {"Xa02", "Drive 2"}, {"Xgap", "Not there"}};
  machine.keys["Xa10"] = flt(41);
  machine.keys["Xa02"] = flt(42.5F);
  machine.keys["TB1T"] = sp78(30);
  machine.keys["TG0D"] = sp78(50);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(
      sampler.full(),
      Entries({{"Battery 1", "30"}, {"Drive 2", "42"}, {"drive 10", "41"}, {"GPU Die", "50"}}));
  EXPECT_EQ(sampler.record()->sensors().find("Drive 2").asText(), "42");
}

TEST(AddedNames, AreShownFrom1To119Degrees) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Low"}, {"Xa01", "Lowest"}, {"Xa02", "Highest"}, {"Xa03", "High"}};
  machine.keys["Xa00"] = flt(0.9F);
  machine.keys["Xa01"] = flt(1);
  machine.keys["Xa02"] = flt(119.9F);
  machine.keys["Xa03"] = flt(120);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Highest", "119"}, {"Lowest", "1"}}));
}

TEST(AddedNames, ShowTheHighestOfEqualNames) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Drive"}, {"Xa01", "Drive"}, {"Xa02", "GPU Die"}};
  machine.keys["Xa00"] = sp78(44);
  machine.keys["Xa01"] = sp78(40);
  machine.keys["Xa02"] = sp78(61);
  machine.keys["TG0D"] = sp78(60);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Drive", "44"}, {"GPU Die", "61"}}));
}

TEST(AddedNames, FallByADegreeAPassIfTheyDrop) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Drive"}};
  machine.keys["Xa00"] = sp78(70);
  Sampler sampler(machine);
  sampler.pass();
  machine.keys["Xa00"] = sp78(44);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Drive", "69"}}));
}

TEST(AddedNames, AreKeptAsTheyWereWhenTheEngineWasMade) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Drive"}};
  machine.keys["Xa00"] = sp78(40);
  Sampler sampler(machine);
  machine.addedNames = {{"Xa00", "Renamed"}};
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Drive", "40"}}));
  EXPECT_EQ(std::ranges::count(machine.asked, "names"), 1);
}

TEST(AddedNames, AreForwardedByAWrapper) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Drive"}};
  MachineWrapper wrapper(machine);
  const Sampler sampler(wrapper);
  EXPECT_EQ(nameOf(sampler.state(), "Xa00"), "Drive");
}

}  // namespace
}  // namespace halvermonte::test
