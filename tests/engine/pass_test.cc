// One pass as a whole: what it asks in which order, what it stores in which order, and how it ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "platform/Processor.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/CatalogueExpectations.hpp"
#include "tests/engine/Records.hpp"
#include "tests/support/PlatformCalls.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using Names = std::vector<std::string>;

void add(Names& names, const Names& more) { names.insert(names.end(), more.begin(), more.end()); }

void addRead(Names& questions, const std::string& key) {
  add(questions, {"info " + key, "bytes " + key});
}

/// A machine of one sensor of each sort, two fans and two drives.
void fill(TestMachine& machine) {
  machine.keys["TW0P"] = sp78(40);
  machine.setTemperatureSensors({sensor("GPU MTR Temp Sensor1", 50), sensor("Tg1b", 30)});
  machine.keys["FNum"] = ui8(2);
  machine.keys["F0ID"] = fanDescriptor("Left");
  machine.keys["F0Ac"] = fpe2(1200);
  machine.keys["F1ID"] = fanDescriptor("Right");
  machine.keys["F1Ac"] = fpe2(1300);
  machine.drives = {DriveStatistics{1000, 2000}, DriveStatistics{3000, 4000}};
}

TEST(Pass, ReturnsTheVeryRecordAndKeepsNoReference) {
  TestMachine machine;
  Sampler sampler(machine);
  const auto record = std::make_shared<StatisticsData>();
  EXPECT_EQ(sampler.engine().getSensorsInfo(record), record);
  EXPECT_EQ(record.use_count(), 1);
}

/// The questions of a pass over that machine; the clock is asked once more from the second one on.
Names questionsOfAPass(bool first) {
  Names questions = {"walk", "drive 0", "drive 1", "clock"};
  if (!first) questions.push_back("clock");
  add(questions, {"controller", "open"});
  for (const char* key : {"TA0P", "TA1P", "TC0P", "TC0D", "TG0P", "TG0D", "TN0D", "TM0P", "TB0T",
                          "TH0P", "TB0T", "TB1T", "TB2T", "TB3T", "TW0P", "TI0P", "TI1P"}) {
    addRead(questions, key);
  }
  add(questions, {"sensors", "sensors"});
  for (const std::string& key : expectedTemperatureKeys()) addRead(questions, key);
  for (const char* key : {"FNum", "F0ID", "F0Ac", "F1ID", "F1Ac"}) addRead(questions, key);
  questions.push_back("close");
  return questions;
}

TEST(Pass, AsksTheMachineInItsOrder) {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  for (const bool first : {true, false, false}) {
    machine.asked.clear();
    sampler.pass();
    EXPECT_EQ(machine.asked, questionsOfAPass(first));
  }
}

const Names kTexts = {
    "sensors_temperature", "sensors_temperatureData", "sensors_fans",
    "sensors_fansData",    "sensors_temperatureMini", "sensors_temperatureMiniData"};
const Names kDisks = {
    "diskIO_activitiesMax", "diskIO_activitiesMaxText", "diskIO_speedRead", "diskIO_speedWrite",
    "diskIO_speedReadText", "diskIO_speedWriteText",    "diskIO_read",      "diskIO_write",
    "diskIO_readText",      "diskIO_writeText",         "diskIO_activities"};

/// What a pass stores if every text has lines. A first pass has nothing to steady against.
Names storesOfAPass(bool first) {
  Names stores = kTexts;
  add(stores, {"sensors", "fans"});
  if (kProcessor == Processor::arm64) {
    if (!first) add(stores, {"sensors"});
    add(stores, {"sensors_temperature", "sensors_temperatureData"});
  }
  add(stores, kDisks);
  return stores;
}

TEST(Pass, StoresItsResultsInTheirOrder) {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  const auto record = std::make_shared<LoggingRecord>();
  for (const bool first : {true, false, false}) {
    record->stored.clear();
    sampler.engine().getSensorsInfo(record);
    EXPECT_EQ(record->stored, storesOfAPass(first));
  }
}

TEST(Pass, StoresNoDictionaryWithoutAnEntry) {
  TestMachine machine;
  Sampler sampler(machine);
  const auto record = std::make_shared<LoggingRecord>();
  sampler.engine().getSensorsInfo(record);
  Names stores = kTexts;
  if (kProcessor == Processor::arm64) add(stores, {kTexts[0], kTexts[1]});
  add(stores, kDisks);
  EXPECT_EQ(record->stored, stores);
}

TEST(Pass, ReadsTheTextsBackFromTheRecord) {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  const auto record = std::make_shared<DivertingRecord>();
  record->temperatures = Text("Oven\nCellar\n");
  record->temperatureValues = Text("180\n12\n");
  record->fanNames = Text("Hood\n");
  record->fanValues = Text("900\n");
  sampler.engine().getSensorsInfo(record);
  EXPECT_EQ(entriesOf(record->sensors()), Entries({{"Cellar", "12"}, {"Oven", "180"}}));
  EXPECT_EQ(entriesOf(record->fans()), Entries({{"Hood", "900"}}));
}

class AbsentText : public testing::TestWithParam<std::optional<Text> DivertingRecord::*> {};

TEST_P(AbsentText, OfATemperatureSkipsBothDictionariesAndTheSteadying) {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  const auto record = std::make_shared<DivertingRecord>();
  record.get()->*GetParam() = Text();
  for (int pass = 0; pass < 2; ++pass) {
    record->stored.clear();
    sampler.engine().getSensorsInfo(record);
    Names stores = kTexts;
    add(stores, kDisks);
    EXPECT_EQ(record->stored, stores);
  }
  EXPECT_FALSE(sampler.state().prevTempos);
}

INSTANTIATE_TEST_SUITE_P(NamesAndValues, AbsentText,
                         testing::Values(&DivertingRecord::temperatures,
                                         &DivertingRecord::temperatureValues));

TEST(Pass, LeavesTheFansIfTheirTextIsAbsent) {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  for (const auto text : {&DivertingRecord::fanNames, &DivertingRecord::fanValues}) {
    const auto record = std::make_shared<DivertingRecord>();
    record.get()->*text = Text();
    sampler.engine().getSensorsInfo(record);
    EXPECT_EQ(std::ranges::count(record->stored, "fans"), 0);
    EXPECT_GE(std::ranges::count(record->stored, "sensors"), 1);
    EXPECT_EQ(record->stored.back(), "diskIO_activities");
  }
}

TEST(Pass, OpensAndClosesItsOwnConnection) {
  TestMachine machine;
  Sampler sampler(machine);
  const size_t handles = portable::liveHandles();
  std::string former;
  for (int pass = 0; pass < 3; ++pass) {
    machine.asked.clear();
    const PlatformCalls calls;
    sampler.pass();
    EXPECT_EQ(std::ranges::count(machine.asked, "open"), 1);
    EXPECT_EQ(std::ranges::count(machine.asked, "close"), 1);
    EXPECT_EQ(portable::liveHandles(), handles);
    EXPECT_EQ(sampler.state().conn, 0U) << "there is none outside a pass";
    EXPECT_TRUE(calls.made.back().starts_with("IOServiceClose "));
    EXPECT_NE(calls.made.back(), former);
    former = calls.made.back();
  }
}

TEST(Pass, AsksNothingOfAFormerConnectionIfItsOwnDoesNotOpen) {
  TestMachine machine;
  Sampler sampler(machine);
  sampler.pass();
  machine.openCode = kCodeError;
  const PlatformCalls calls;
  sampler.pass();
  EXPECT_GT(std::ranges::count(calls.made, "IOConnectCallStructMethod 0"), 100);
  EXPECT_EQ(std::ranges::count(calls.made, "IOServiceClose 0"), 1);
  for (const std::string& call : calls.made) EXPECT_TRUE(call.ends_with(" 0")) << call;
}

/// Notes how many connections were closed when the first text is stored.
class ClosingWitness : public LoggingRecord {
 public:
  explicit ClosingWitness(const PlatformCalls& calls) : calls_(calls) {}

  std::optional<long> closedAtFirstText;

  void setSensors_temperature(Text value) override {
    if (!closedAtFirstText) {
      closedAtFirstText = std::ranges::count_if(
          calls_.made, [](const std::string& call) { return call.starts_with("IOServiceClose "); });
    }
    LoggingRecord::setSensors_temperature(std::move(value));
  }

 private:
  const PlatformCalls& calls_;
};

TEST(Pass, ClosesItsConnectionBeforeItStoresEvenIfItDidNotOpen) {
  TestMachine machine;
  Sampler sampler(machine);
  for (const uint32_t openCode : {kCodeSuccess, kCodeError}) {
    machine.openCode = openCode;
    const PlatformCalls calls;
    const auto record = std::make_shared<ClosingWitness>(calls);
    sampler.engine().getSensorsInfo(record);
    EXPECT_EQ(record->closedAtFirstText, 1);
  }
}

}  // namespace
}  // namespace halvermonte::test
