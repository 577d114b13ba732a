// Temperatures of the catalogue's keys: the highest accepted reading under each display name.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <set>

#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

struct Edge {
  double reading;
  const char* value;  ///< "": not shown
};

class CatalogueRange : public testing::TestWithParam<Edge> {};

TEST_P(CatalogueRange, Is1To119) {
  const auto& [reading, value] = GetParam();
  TestMachine machine;
  machine.keys["TL0P"] = flt(static_cast<float>(reading));
  Sampler sampler(machine);
  sampler.pass();
  const Entries expected = *value == '\0' ? Entries() : Entries({{"LCD Proximity", value}});
  EXPECT_EQ(sampler.full(), expected) << reading;
  EXPECT_EQ(sampler.mini(), Entries());
}

INSTANTIATE_TEST_SUITE_P(Edges, CatalogueRange,
                         testing::Values(Edge{119.9, "119"}, Edge{119, "119"}, Edge{120, ""},
                                         Edge{120.5, ""}, Edge{0.9, ""}, Edge{0, ""},
                                         Edge{-0.5, ""}, Edge{-1, ""}, Edge{-40, ""}, Edge{1, "1"},
                                         Edge{1.999, "1"}, Edge{65.5, "65"}, Edge{1e30, ""},
                                         Edge{-1e30, ""},
                                         Edge{std::numeric_limits<double>::quiet_NaN(), ""},
                                         Edge{std::numeric_limits<double>::infinity(), ""}));

TEST(CatalogueTemperatures, ShowTheHighestOfTheKeysOfOneName) {
  TestMachine machine;
  machine.keys["TG0D"] = sp78(50);
  machine.keys["TG1D"] = sp78(57);
  machine.keys["TCXC"] = sp78(61);
  machine.keys["TCXc"] = sp78(60);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"GPU Die", "57"}, {"PECI CPU", "61"}}));
}

TEST(CatalogueTemperatures, LeaveReadingsOutOfRangeOutOfTheHighest) {
  TestMachine machine;
  machine.keys["TG0D"] = sp78(50);
  machine.keys["TG1D"] = sp78(125);
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"GPU Die", "50"}}));
}

// As people expect them: without regard to case, and numbers by their value.
constexpr const char* kEveryNameInOrder = R"(
Airflow 1
Airflow 2
Airflow Left
Airflow Right
Airflow Top
Airport Proximity
Battery
Battery 1
Battery 2
Battery TS_MAX
BLC Proximity
CPU 1 Heatsink
CPU 1 Heatsink Alt.
CPU 1 Package
CPU 1 Package Alt.
CPU 1 Proximity
CPU 1 Sensor 1
CPU 1 Sensor 2
CPU 2 Heatsink
CPU 2 Heatsink Alt.
CPU 2 Package
CPU 2 Package Alt.
CPU 2 Proximity
CPU 2 Sensor 2
CPU Core 1
CPU Core 2
CPU Core 3
CPU Core 4
CPU Core 5
CPU Core 6
CPU Core 7
CPU Core 8
CPU Efficiency Core 1
CPU Efficiency Core 2
CPU Efficiency Core 3
CPU Efficiency Core 4
Disk Drive
Expansion Slots
GPU Cluster 1
GPU Cluster 2
GPU Cluster 3
GPU Cluster 4
GPU Cluster 5
GPU Cluster 6
GPU Cluster 7
GPU Cluster 8
GPU Cluster 9
GPU Cluster 10
GPU Die
GPU Heatsink
GPU Proximity
HDD Bay 1
HDD Bay 2
HDD Bay 3
HDD Bay 4
Heatpipe 1
Heatpipe 2
Heatpipe 3
LCD Proximity
MCH Die
MCH Heatsink
Mem Bank A1
Mem Bank A2
Mem Bank B1
Mem Bank B2
Mem Module A1
Mem Module A2
Mem Module B1
Mem Module B2
Memory Bank 1
Memory Bank 2
Memory Bank 3
Memory Bank 4
Memory Bank 5
Memory Bank 6
Memory Bank 7
Memory Bank 8
Memory Proximity
Northbridge Die
Northbridge Proximity 1
Northbridge Proximity 2
Optical Drive
Palm Rest
PCH Die
PCI Slot 1 Pos 1
PCI Slot 1 Pos 2
PCI Slot 2 Pos 1
PCI Slot 2 Pos 2
PECI CPU
PECI GPU
PECI SA
Power Supply 1
Power Supply 1 Alt.
Power Supply 2
Power Supply 2 Alt.
Power Supply 3
Power Supply 4
Power Supply 5
Power Supply 6
)";

TEST(CatalogueTemperatures, AreInTheOrderThatPeopleExpect) {
  TestMachine machine;
  machine.kernelVariables["hw.physicalcpu"] = 12;
  for (const std::string& key : expectedTemperatureKeys()) machine.keys[key] = sp78(20);
  Sampler sampler(machine);
  sampler.pass();
  std::string names = "\n";
  for (const auto& [name, value] : sampler.full()) names += name + '\n';
  EXPECT_EQ(names, kEveryNameInOrder);
}

TEST(CatalogueTemperatures, AreNotShownWithoutADisplayName) {
  TestMachine machine;
  machine.keys["Tp0n"] = sp78(50);  // in the list, without a name on any processor
  machine.keys["TP0P"] = sp78(50);  // named, and in no list
  machine.keys["ZZZZ"] = sp78(50);
  Sampler sampler(machine);
  machine.asked.clear();
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries());
  EXPECT_EQ(std::ranges::count(machine.asked, "info Tp0n"), 1);
  EXPECT_EQ(std::ranges::count(machine.asked, "info TP0P"), 0);
}

TEST(CatalogueTemperatures, RememberEveryNamedKeyAndNoOther) {
  TestMachine machine;
  Sampler sampler(machine);
  sampler.pass();
  const auto names = expectedNames(Chip::other, 1);
  size_t named = 0;
  const std::vector<std::string> keys = expectedTemperatureKeys();
  for (const std::string& key : std::set<std::string>(keys.begin(), keys.end())) {
    named += names.count(key);
  }
  EXPECT_EQ(sampler.state().sensorsHistory.size(), named);
  sampler.pass();
  EXPECT_EQ(sampler.state().sensorsHistory.size(), named);
}

// A key in two places of the list.
TEST(CatalogueTemperatures, AreReadTwiceForAKeyThatStandsTwice) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.asked.clear();
  sampler.pass();
  for (const char* key : {"info Tm0P", "info Tp0j", "info Tg0f"}) {
    EXPECT_EQ(std::ranges::count(machine.asked, key), 2) << key;
  }
}

}  // namespace
}  // namespace halvermonte::test
