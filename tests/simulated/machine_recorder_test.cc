#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "tests/support/ListingMachine.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr size_t kTicks = 5;

/// The record's properties after each pass, one in each line.
using Contents = std::vector<std::string>;

std::string lines(const StatisticsData& record) {
  std::string lines;
  for (const auto& [name, value] : described(record)) lines += name + ": " + value + '\n';
  return lines;
}

/// Runs passes over the machine.
Contents runPasses(Machine& machine) {
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  Contents contents;
  for (size_t i = 0; i < kTicks; ++i) {
    if (i > 0) machine.nextTick();
    engine.getSensorsInfo(record);
    contents.push_back(lines(*record));
  }
  return contents;
}

std::string recordPasses(const std::string& file, Contents& seen) {
  const auto machine = SimulatedMachine::fromText(file, "original.json");
  MachineRecorder recorder(*machine, MachineRecorder::HostName::kept);
  seen = runPasses(recorder);
  return recorder.machineFile();
}

/// Expects that recording does not change the passes, and that its file gives the same passes.
void expectTheSame(const std::string& file) {
  const auto original = SimulatedMachine::fromText(file, "original.json");
  const Contents expected = runPasses(*original);
  Contents seen;
  const std::string recording = recordPasses(file, seen);
  const auto machine = SimulatedMachine::fromText(recording, "recording.json");
  const Contents replayed = runPasses(*machine);
  for (size_t tick = 0; tick < kTicks; ++tick) {
    EXPECT_EQ(seen[tick], expected[tick]) << "in tick " << tick;
    EXPECT_EQ(replayed[tick], expected[tick]) << "in tick " << tick << " of " << recording;
  }
}

TEST(MachineRecorder, WritesAFileThatGivesTheSamePasses) {
  for (const BundledMachine& machine : bundledMachines()) {
    SCOPED_TRACE(machine.name);
    expectTheSame(std::string(machine.json));
  }
}

constexpr const char* kFaulty = R"json({
  "name": "faulty",
  "hostName": null,
  "commands": {"system_profiler SPHardwareDataType -xml": {"launches": false}},
  "ticks": [
    {"time": 7.25,
     "drives": [{"Bytes (Read)": 9}, null, "unreadable", {}],
     "hid": {"temperature": [{"product": "Tg1b", "value": 41.7}, {"product": "x"}, {}]},
     "smc": {"absentCode": 3, "keys": {
       "TC0P": {"type": "flt ", "bytes": "0000c07f"},
       "TC0D": {"type": "sp78", "value": 40, "size": 70},
       "TG0D": {"type": "sp78", "value": 40, "readCode": 5},
       "TN0D": {"type": "ui8 ", "value": 1, "infoCode": 16384},
       "TB0T": {"type": "sp78", "value": 30, "readResult": 9},
       "FNum": {"type": "ui8 ", "value": 1},
       "F0ID": {"type": "{fds", "name": "Left", "infoResult": 2},
       "F0Ac": {"type": "fpe2", "value": 900}}}},
    {"drivesRaise": "gone", "hid": {"temperature": null}, "smc": {"keys": {"TC0P": null}}},
    {"time": 3, "drives": null, "smc": {"service": "refused", "code": 9}},
    {"smc": {"service": "unmatched"}, "hid": {"temperature": []}},
    {"smc": {"service": "present", "wideCalls": "refuse"}}
  ]
})json";

TEST(MachineRecorder, KeepsFailedAnswers) { expectTheSame(kFaulty); }

TEST(MachineRecorder, KeepsTheCodeAndResultOfEachStep) {
  const auto machine = SimulatedMachine::fromText(R"json({"name": "refusing", "ticks": [
      {"smc": {"keys": {"AAAA": {"type": "ui8 ", "value": 1, "infoCode": 11},
                        "BBBB": {"type": "ui8 ", "value": 1, "infoResult": 12},
                        "CCCC": {"type": "ui8 ", "value": 1, "readCode": 13},
                        "DDDD": {"type": "ui8 ", "value": 1, "readResult": 14},
                        "EEEE": {"type": "ui8 ", "value": 1}}}}]})json",
                                                  "original.json");
  MachineRecorder recorder(*machine, MachineRecorder::HostName::kept);
  for (const std::string& name : keysOf(*machine)) {
    const uint32_t key = fourCharacterCode(name);
    recorder.smcKeyInfo(key);
    recorder.smcKeyBytes(key);
  }
  const auto replayed = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  ASSERT_EQ(keysOf(*replayed), keysOf(*machine));
  for (const std::string& name : keysOf(*machine)) {
    SCOPED_TRACE(name);
    const uint32_t key = fourCharacterCode(name);
    EXPECT_EQ(replayed->smcKeyInfo(key).code, machine->smcKeyInfo(key).code);
    EXPECT_EQ(replayed->smcKeyInfo(key).result, machine->smcKeyInfo(key).result);
    EXPECT_EQ(replayed->smcKeyInfo(key).dataSize, machine->smcKeyInfo(key).dataSize);
    EXPECT_EQ(replayed->smcKeyBytes(key).code, machine->smcKeyBytes(key).code);
    EXPECT_EQ(replayed->smcKeyBytes(key).result, machine->smcKeyBytes(key).result);
    EXPECT_EQ(replayed->smcKeyBytes(key).bytes, machine->smcKeyBytes(key).bytes);
  }
}

TEST(MachineRecorder, KeepsThatDrivesCannotBeMatched) {
  expectTheSame(R"({"name": "driveless", "ticks": [{"drives": null}, {"drives": [{}]}]})");
}

constexpr const char* kNamed = R"json({
  "name": "named",
  "names": [["Xb00", "SSD 990"], ["Xa00", "Drive \u00e9"], ["Xc00", "GPU Die"]],
  "ticks": [
    {"smc": {"keys": {
       "Xb00": {"type": "flt ", "value": 40}, "Xa00": {"type": "sp78", "value": 51},
       "Xc00": {"type": "sp78", "value": 70}, "TG0D": {"type": "sp78", "value": 60}}}},
    {"smc": {"keys": {"Xb00": null, "Xc00": {"type": "sp78", "value": 20}}}}
  ]
})json";

TEST(MachineRecorder, KeepsTheAddedNames) {
  expectTheSame(kNamed);
  Contents seen;
  const std::string recording = recordPasses(kNamed, seen);
  EXPECT_NE(seen[0].find("SSD 990"), std::string::npos);
  EXPECT_EQ(recordPasses(recording, seen), recording);
}

TEST(MachineRecorder, WritesNoNamesIfThereAreNone) {
  Contents seen;
  EXPECT_EQ(recordPasses(kFaulty, seen).find("names"), std::string::npos);
}

TEST(MachineRecorder, LeavesOutNamesThatAMachineFileCannotHave) {
  TestMachine machine;
  machine.addedNames = {{"Xa00", "Drive"}, {"Xa01", ""},     {"Xa02", "a\nb"},    {"TC0P", "CPU"},
                        {"Xa00", "Twice"}, {"short", "Key"}, {"Xa03", "Fan \xFF"}};
  MachineRecorder recorder(machine, MachineRecorder::HostName::leftOut);
  runPasses(recorder);
  const auto replayed = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  const std::vector<SensorName> names = replayed->sensorNames();
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(names[0].key, "Xa00");
  EXPECT_EQ(names[0].name, "Drive");
  EXPECT_EQ(names[1].key, "Xa03");
}

/// A machine with one key for the engine, and others that it only lists.
struct MachineWithOtherKeys : ListingMachine {
  MachineWithOtherKeys() {
    keys["TC0P"] = sp78(50);
    keys["zETM"] = flt(7);
    keys["RSSN"] = rawKey("ch8*", {'C', '0', '2', 'X'});
  }

  auto timesAsked(const std::string& question) const { return std::ranges::count(asked, question); }
};

TEST(MachineRecorder, KeepsKeysThatTheControllerOnlyLists) {
  MachineWithOtherKeys machine;
  MachineRecorder recorder(machine, MachineRecorder::HostName::leftOut);
  runPasses(recorder);
  const auto replayed = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  EXPECT_EQ(keysOf(*replayed), keysOf(machine));
  const uint32_t key = fourCharacterCode("zETM");
  EXPECT_EQ(replayed->smcKeyInfo(key).dataType, fourCharacterCode("flt "));
  EXPECT_EQ(replayed->smcKeyBytes(key).bytes, machine.keys["zETM"].data.bytes);
}

TEST(MachineRecorder, LeavesTextsOfListedKeysOut) {
  MachineWithOtherKeys machine;
  MachineRecorder recorder(machine, MachineRecorder::HostName::leftOut);
  runPasses(recorder);
  const auto replayed = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  const uint32_t key = fourCharacterCode("RSSN");
  EXPECT_EQ(replayed->smcKeyInfo(key).dataSize, 4U);
  EXPECT_EQ(replayed->smcKeyBytes(key).bytes, SMCKeyBytes{}.bytes);
  EXPECT_EQ(machine.timesAsked("bytes RSSN"), 0);
}

TEST(MachineRecorder, AsksForListedKeysInTheFirstTickAlone) {
  MachineWithOtherKeys machine;
  MachineRecorder recorder(machine, MachineRecorder::HostName::leftOut);
  runPasses(recorder);
  recorder.machineFile();
  EXPECT_EQ(machine.timesAsked("info zETM"), 1);
  EXPECT_EQ(machine.timesAsked("open"), machine.timesAsked("close"));
  EXPECT_EQ(machine.timesAsked("open"), static_cast<std::ptrdiff_t>(kTicks) + 1);
}

TEST(MachineRecorder, AsksForNoListedKeyOfAControllerThatCannotBeOpened) {
  MachineWithOtherKeys machine;
  machine.openCode = kCodeError;
  MachineRecorder recorder(machine, MachineRecorder::HostName::leftOut);
  recorder.machineFile();
  EXPECT_EQ(machine.timesAsked("info zETM"), 0);
  EXPECT_EQ(machine.timesAsked("close"), 0);
}

TEST(MachineRecorder, LeavesTheHostNameOut) {
  const auto machine = SimulatedMachine::fromText(
      R"({"name": "notebook", "hostName": "Hazel's", "ticks": [{}]})", "original.json");
  MachineRecorder recorder(*machine, MachineRecorder::HostName::leftOut);
  runPasses(recorder);
  EXPECT_EQ(recorder.machineFile().find("Hazel"), std::string::npos);
}

TEST(MachineRecorder, StopsTheClockWithinATick) {
  struct Running : Machine {
    double clock() override { return now += 0.25; }
    double now = 0;
  } running;
  MachineRecorder recorder(running, MachineRecorder::HostName::leftOut);
  EXPECT_EQ(recorder.clock(), 0.25);
  EXPECT_EQ(recorder.clock(), 0.25);
  recorder.nextTick();
  EXPECT_EQ(recorder.clock(), 0.5);
}

}  // namespace
}  // namespace halvermonte::test
