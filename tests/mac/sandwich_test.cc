// What a Mac's machine makes of a machine's answers is what they were.
#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/mac/Sandwich.hpp"
#include "tests/support/RecordTexts.hpp"

namespace halvermonte::test {
namespace {

constexpr size_t kTicks = 5;

/// The records after each pass, the recording of all of them, and what is alive afterwards. An
/// engine keeps the list of its drives for as long as the process lives.
struct Shown {
  std::vector<std::map<std::string, std::string>> records;
  std::string recording;
  size_t objectsLeft = 0;
  size_t handlesLeft = 0;
};

Shown runPasses(Machine& machine) {
  MachineRecorder recorder(machine, MachineRecorder::HostName::kept);
  Shown shown;
  {
    const ScopedMachine scope(recorder);
    HalvermonteSensorsEngine engine;
    const auto record = std::make_shared<StatisticsData>();
    for (size_t i = 0; i < kTicks; ++i) {
      if (i > 0) recorder.nextTick();
      engine.getSensorsInfo(record);
      shown.records.push_back(described(*record));
    }
  }
  shown.recording = recorder.machineFile();
  return shown;
}

Shown runCounted(const std::string& file, const std::function<Shown(Machine&)>& run) {
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  const auto machine = SimulatedMachine::fromText(file, "machine.json");
  CountedKeys counted(*machine);
  Shown shown = run(counted);
  shown.objectsLeft = portable::liveObjects() - objects;
  shown.handlesLeft = portable::liveHandles() - handles;
  return shown;
}

Shown runDirectly(const std::string& file) { return runCounted(file, runPasses); }

Shown runInBetween(const std::string& file) {
  return runCounted(file, [](Machine& below) {
    Sandwich sandwich(below);
    return runPasses(sandwich);
  });
}

void expectTheSame(const std::string& file) {
  const Shown direct = runDirectly(file);
  const Shown between = runInBetween(file);
  for (size_t tick = 0; tick < kTicks; ++tick) {
    EXPECT_EQ(between.records[tick], direct.records[tick]) << "in tick " << tick;
  }
  EXPECT_EQ(between.recording, direct.recording);
  EXPECT_EQ(between.objectsLeft, 0U);
  EXPECT_EQ(between.handlesLeft, direct.handlesLeft);
}

TEST(SandwichTest, EveryBundledMachineIsShownAndRecordedAsItIs) {
  for (const BundledMachine& machine : bundledMachines()) {
    SCOPED_TRACE(machine.name);
    expectTheSame(std::string(machine.json));
  }
}

TEST(SandwichTest, FailedAnswersAreShownAndRecordedAsTheyAre) {
  expectTheSame(R"json({
    "name": "faulty", "hostName": null, "sysctl": {"hw.physicalcpu": 4},
    "commands": {"system_profiler SPHardwareDataType -xml": {"launches": false}},
    "ticks": [
      {"drives": [{"Bytes (Read)": 9}, null, "unreadable", {"Bytes (Write)": -1}],
       "hid": {"temperature": [{"product": "Tg1b", "value": 41.7}, {"product": ""}, {}],
               "current": null},
       "smc": {"keys": {
         "TC0P": {"type": "flt ", "bytes": "0000c07f"},
         "TC0D": {"type": "sp78", "value": 40, "size": 70},
         "TG0D": {"type": "sp78", "value": 40, "readCode": 5},
         "TN0D": {"type": "ui8 ", "value": 1, "infoCode": 16384},
         "TB0T": {"type": "sp78", "value": 30, "readResult": 9},
         "FNum": {"type": "ui8 ", "value": 1},
         "F0ID": {"type": "{fds", "name": "Left", "infoResult": 2},
         "F0Ac": {"type": "fpe2", "value": 900}}}},
      {"drivesRaise": "gone", "hid": {"temperature": null}, "smc": {"keys": {"TC0P": null}}},
      {"time": 3, "drives": null, "smc": {"wideCalls": "refuse"}},
      {"hid": {"temperature": []}, "drives": [{}]},
      {}
    ]})json");
}

TEST(SandwichTest, AControllerThatIsNotThereIsShownAsItIs) {
  for (const std::string service :
       {R"("missing")", R"("refused", "code": 9)", R"("unmatched", "code": 7)"}) {
    SCOPED_TRACE(service);
    expectTheSame(R"({"name": "closed", "ticks": [{"smc": {"service": )" + service + "}}]}");
  }
}

TEST(SandwichTest, DrivesThatCannotBeMatchedStayAway) {
  expectTheSame(R"({"name": "driveless", "ticks": [{"drives": null}, {"drives": [{}]}]})");
}

}  // namespace
}  // namespace halvermonte::test
