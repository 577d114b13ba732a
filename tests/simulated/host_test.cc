// A host's side of machines: through the shared library, with its public headers alone.
#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/Exceptions.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/Readings.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/ThisComputer.hpp"

namespace {

using namespace halvermonte;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StrEq;

Reading celsius(std::string name, int number) {
  return {std::move(name), number, Unit::degreesCelsius};
}

/// The temperatures of each tick.
std::vector<std::vector<Reading>> passesOver(Machine& machine, int ticks) {
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  std::vector<std::vector<Reading>> passes;
  for (int tick = 0; tick < ticks; ++tick) {
    if (tick > 0) machine.nextTick();
    passes.push_back(temperatures(*engine.getSensorsInfo(record)));
  }
  return passes;
}

class Kettle : public Machine {
 public:
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    HIDServices services;
    if (kind == HIDSensorKind::temperature) services.push_back({"gas gauge battery", 99});
    return std::make_shared<HIDServices>(std::move(services));
  }
  void beginDriveWalk() override { throw PlatformException("no drives in a kettle"); }
};

TEST(HostOfMachines, ReadsAMachineOfItsOwn) {
  Kettle kettle;
  EXPECT_THAT(passesOver(kettle, 1), ElementsAre(ElementsAre(celsius("Gas Gauge Battery", 99))));
}

TEST(HostOfMachines, ReadsTheTicksOfAMachineFile) {
  const auto machine = SimulatedMachine::fromText(
      R"({"name": "Sample", "ticks": [{"smc": {"keys": {"TC0P": {"type": "sp78", "value": 40}}}},
                                      {"smc": {"keys": {"TC0P": {"type": "sp78", "value": 41}}}}]})",
      "sample.json");
  EXPECT_THAT(passesOver(*machine, 2), ElementsAre(ElementsAre(celsius("CPU 1 Proximity", 40)),
                                                   ElementsAre(celsius("CPU 1 Proximity", 41))));
}

TEST(HostOfMachines, CatchesTheErrorInAMachineFile) {
  try {
    SimulatedMachine::fromText("{}", "empty.json");
    FAIL() << "the file was accepted";
  } catch (const MachineFileError& error) {
    EXPECT_THAT(error.what(),
                StrEq("empty.json: /name: expected a value, as the member is required"));
  }
}

TEST(HostOfMachines, RecordsAMachineAndReadsTheRecording) {
  const BundledMachine* const bundled = findBundledMachine("m3 max");
  ASSERT_NE(bundled, nullptr);
  const auto machine = SimulatedMachine::fromText(bundled->json, std::string(bundled->fileName));
  MachineRecorder recorder(*machine, MachineRecorder::HostName::kept);
  const std::vector<std::vector<Reading>> passes = passesOver(recorder, 3);
  EXPECT_THAT(passes[2], Not(IsEmpty()));
  const auto replay = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  EXPECT_EQ(passesOver(*replay, 3), passes);
}

TEST(HostOfMachines, ReadsATreeInPlaceOfThisComputer) {
  const auto computer = makeThisComputer({.sys = "/nonexistent", .proc = "/nonexistent"});
  EXPECT_FALSE(computer->isThisComputer());
  EXPECT_THAT(passesOver(*computer, 1), ElementsAre(IsEmpty()));
  EXPECT_TRUE(makeThisComputer()->isThisComputer());
}

}  // namespace
