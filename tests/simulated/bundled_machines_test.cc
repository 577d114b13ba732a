// The bundled machines: finding them, and what the engine shows of them.
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {
namespace {

std::unique_ptr<SimulatedMachine> load(const BundledMachine& machine) {
  return SimulatedMachine::fromText(machine.json, std::string(machine.fileName));
}

TEST(BundledMachines, HaveTheseNamesInThisOrder) {
  std::vector<std::string_view> names;
  for (const BundledMachine& machine : bundledMachines()) names.push_back(machine.name);
  EXPECT_EQ(names, (std::vector<std::string_view>{"Intel Notebook", "Intel Tower", "M1", "M2 Max",
                                                  "M3 Max", "M4 Pro"}));
}

TEST(BundledMachines, AreFoundByNameOrFileInAnyCase) {
  ASSERT_NE(findBundledMachine("m3 max"), nullptr);
  EXPECT_EQ(findBundledMachine("m3 max")->name, "M3 Max");
  EXPECT_EQ(findBundledMachine("M3MAX"), findBundledMachine("M3 Max"));
  EXPECT_EQ(findBundledMachine("inteltower")->fileName, "IntelTower.json");
  EXPECT_EQ(findBundledMachine("M3"), nullptr);
  EXPECT_EQ(findBundledMachine(""), nullptr);
}

TEST(BundledMachines, AreNamedAsTheirFilesSay) {
  for (const BundledMachine& machine : bundledMachines()) {
    EXPECT_EQ(load(machine)->name(), machine.name);
  }
}

TEST(BundledMachines, DescribeTheirProcessorAndSensors) {
  EXPECT_EQ(findBundledMachine("Intel Tower")->description(),
            "6-Core Intel Xeon, 12 cores, 86 SMC keys, 0 HID sensors, 8 fans, 3 drives");
  EXPECT_EQ(findBundledMachine("M1")->description(),
            "Apple M1, 8 cores, 30 SMC keys, 31 HID sensors, 1 fan, 1 drive");
}

struct Shown {
  std::set<std::string> temperatures, fans;  // the different texts of all passes
  size_t sensorCount = 0, fanCount = 0;
  int passesWithTraffic = 0;
};

Shown runPasses(const BundledMachine& bundled, int passes) {
  const auto machine = load(bundled);
  const ScopedMachine scope(*machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  Shown shown;
  for (int pass = 0; pass < passes; ++pass, machine->nextTick()) {
    engine.getSensorsInfo(record);
    shown.temperatures.emplace(record->sensors_temperatureData().str());
    shown.fans.emplace(record->sensors_fansData().str());
    shown.passesWithTraffic += record->diskIO_speedRead().float64Value() > 0 ? 1 : 0;
    shown.sensorCount = record->sensors().size();
    shown.fanCount = record->fans().size();
  }
  return shown;
}

class BundledMachineUnderTheEngine : public testing::TestWithParam<std::string> {};

TEST_P(BundledMachineUnderTheEngine, ShowsReadingsThatMoveForMinutes) {
  constexpr int kPasses = 290;
  const Shown shown = runPasses(*findBundledMachine(GetParam()), kPasses);
  EXPECT_GE(shown.sensorCount, 20U);
  EXPECT_GE(shown.temperatures.size(), kPasses / 2U);
  EXPECT_GE(shown.fans.size(), 30U);
  EXPECT_GE(shown.passesWithTraffic, kPasses / 2);
}

INSTANTIATE_TEST_SUITE_P(All, BundledMachineUnderTheEngine,
                         testing::Values("IntelNotebook", "IntelTower", "M1", "M2Max", "M3Max",
                                         "M4Pro"));

TEST(BundledMachines, ShowAllTheirFans) {
  const std::pair<std::string, size_t> fans[] = {
      {"Intel Notebook", 2}, {"Intel Tower", 8}, {"M1", 1},
      {"M2 Max", 2},         {"M3 Max", 2},      {"M4 Pro", 1}};
  for (const auto& [name, count] : fans) {
    EXPECT_EQ(runPasses(*findBundledMachine(name), 1).fanCount, count) << name;
  }
}

TEST(BundledMachines, HaveTheCoresOfTheirProcessors) {
  const auto machine = load(*findBundledMachine("M3 Max"));
  const ScopedMachine scope(*machine);
  HalvermonteSensorsEngine engine;
  EXPECT_EQ(engine.askSytemInfoForProcessorName(), "Apple M3 Max");
  EXPECT_EQ(engine.physicalCores(), 16);
  const auto record = std::make_shared<StatisticsData>();
  engine.getSensorsInfo(record);
  EXPECT_TRUE(record->sensors().find("CPU Core 10"));
  EXPECT_TRUE(record->sensors().find("CPU Performance Cores"));
  EXPECT_TRUE(record->sensors().find("GPU Cluster 6"));
}

}  // namespace
}  // namespace halvermonte
