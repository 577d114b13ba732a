// Every question of a pass fails once below a Mac's machine, in every way in which it can. The pass
// shows what it shows if the same question fails directly, and nothing stays open.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "platform/Foundation.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/FaultyMachine.hpp"
#include "tests/mac/Sandwich.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// A sensor of each sort, two fans and two drives.
struct SmallMachine : TestMachine {
  SmallMachine() {
    keys["TC0P"] = sp78(50);
    keys["TB0T"] = flt(31.5F);
    keys["TI0P"] = sp78(22);
    keys["FNum"] = ui8(2);
    keys["F0ID"] = fanDescriptor("Left");
    keys["F0Ac"] = fpe2(1200);
    keys["F1ID"] = fanDescriptor("Right");
    keys["F1Ac"] = fpe2(1300);
    setTemperatureSensors({sensor("pACC MTR Temp Sensor1", 43), sensor("gas gauge battery", 33)});
    setProcessor("Apple M1");
    kernelVariables["hw.physicalcpu"] = 4;
    nextTick();
  }

  bool nextTick() override {
    now += 1;
    total += 500;
    drives = {DriveStatistics{total, total}, DriveStatistics{total, total}};
    return true;
  }

  int64_t total = 0;
};

enum class From { engineStart, secondPass };

struct Fault {
  Call call;
  Way way = Way::none;
  From from = From::secondPass;
};

/// The record after each of three passes, and the exception of one that ended with it.
using Records = std::vector<std::map<std::string, std::string>>;

Records runPasses(Machine& machine, SmallMachine& below, FaultyMachine& faulty,
                  const Fault& fault) {
  Records shown;
  const ScopedMachine scope(machine);
  if (fault.from == From::engineStart) faulty.failEvery(fault.call, fault.way);
  HalvermonteSensorsEngine engine;
  faulty.listen();
  const auto record = std::make_shared<StatisticsData>();
  for (int pass = 0; pass < 3; ++pass) {
    below.nextTick();
    if (pass == 1 && fault.from == From::secondPass) faulty.failEvery(fault.call, fault.way);
    const auto reason = foundation::reasonRaisedBy([&] { engine.getSensorsInfo(record); });
    faulty.listen();
    shown.push_back(described(*record));
    if (reason) shown.push_back({{"exception", *reason}});
  }
  return shown;
}

Records runDirectly(const Fault& fault) {
  SmallMachine below;
  FaultyMachine faulty(below);
  return runPasses(faulty, below, faulty, fault);
}

Records runInBetween(const Fault& fault) {
  SmallMachine below;
  FaultyMachine faulty(below);
  Sandwich sandwich(faulty);
  return runPasses(sandwich, below, faulty, fault);
}

/// The questions, each once: those that the engine asks when it is made, or in a pass.
std::vector<Call> questionsFrom(From from) {
  SmallMachine below;
  FaultyMachine faulty(below);
  const ScopedMachine scope(faulty);
  HalvermonteSensorsEngine engine;
  if (from == From::secondPass) {
    const auto record = std::make_shared<StatisticsData>();
    engine.getSensorsInfo(record);
    faulty.listen();
    engine.getSensorsInfo(record);
  }
  std::vector<Call> questions;
  for (const Call& call : faulty.calls()) {
    const bool isKey = call.question == Question::keyInfo || call.question == Question::keyBytes;
    const bool isOther = isKey && !below.keys.contains(call.subject) && call.subject != "TC0D";
    if (!isOther && std::ranges::find(questions, call) == questions.end())
      questions.push_back(call);
  }
  return questions;
}

/// What is alive afterwards: an engine keeps the list of its drives for as long as the process
/// lives.
struct Outcome {
  Records shown;
  size_t objectsLeft = 0;
  size_t handlesLeft = 0;
};

Outcome counted(Records (*run)(const Fault&), const Fault& fault) {
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  Records shown = run(fault);
  return {std::move(shown), portable::liveObjects() - objects, portable::liveHandles() - handles};
}

/// The system below a Mac's machine throws nothing of its own.
bool canHappenOnAMac(Way way) { return way != Way::outOfMemory; }

size_t expectTheSameOfEachFault(From from) {
  testing::internal::CaptureStdout();
  size_t faults = 0;
  for (const Call& call : questionsFrom(from)) {
    for (const Way way : waysOf(call.question)) {
      if (!canHappenOnAMac(way)) continue;
      const Fault fault{call, way, from};
      const Outcome between = counted(runInBetween, fault);
      const Outcome direct = counted(runDirectly, fault);
      EXPECT_EQ(between.shown, direct.shown) << described(call, way);
      EXPECT_EQ(between.objectsLeft, 0U) << described(call, way);
      EXPECT_EQ(between.handlesLeft, direct.handlesLeft) << described(call, way);
      ++faults;
    }
  }
  testing::internal::GetCapturedStdout();
  return faults;
}

TEST(SandwichFaultsTest, OfAPassAreShownAsTheyAre) {
  // Of nine keys alone, each with four ways for its size and three for its data.
  EXPECT_GT(expectTheSameOfEachFault(From::secondPass), 9U * (4 + 3));
}

TEST(SandwichFaultsTest, WhileTheEngineIsMadeAreShownAsTheyAre) {
  // The drives, the hardware report and the cores.
  EXPECT_EQ(expectTheSameOfEachFault(From::engineStart), 2U + 2 + 1);
}

}  // namespace
}  // namespace halvermonte::test
