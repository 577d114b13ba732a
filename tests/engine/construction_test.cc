// What an engine is right after construction.
#include <IOKit/IOKitLib.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/portable/LiveCounters.hpp"
#include "tests/support/PlatformCalls.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

void expectMarkers(const std::vector<Value>& history) {
  ASSERT_EQ(history.size(), 75U);
  for (const Value& point : history) {
    const Number number = point.asNumber();
    ASSERT_TRUE(number);
    EXPECT_EQ(number.form(), Number::Form::int32);
    EXPECT_EQ(number.int32Value(), -1);
  }
}

void expectZero(const io_stats& stats) {
  EXPECT_EQ(stats.bytes_delta, 0U);
  EXPECT_EQ(stats.bytes_prev, 0U);
  EXPECT_EQ(stats.bytes, 0U);
  EXPECT_EQ(stats.bsd_bytes_prev, 0U);
  EXPECT_EQ(stats.bsd_bytes, 0U);
}

void expectUnusedIsUntouched(const EngineState& state) {
  EXPECT_FALSE(state.lastShownDate);
  EXPECT_FALSE(state.cachePath);
  EXPECT_FALSE(state.wcachePath);
  EXPECT_FALSE(state.mainAppNeedsData);
  EXPECT_FALSE(state.prevPopulated);
  EXPECT_EQ(state.prevReadVal, 0U);
  EXPECT_EQ(state.prevWriteVal, 0U);
  EXPECT_EQ(state.readRate, 0U);
  EXPECT_EQ(state.writeRate, 0U);
}

TEST(Construction, FillsBothDiskHistoriesWithMarkers) {
  TestMachine machine;
  const Sampler sampler(machine);
  expectMarkers(sampler.state().readDiskPoint);
  expectMarkers(sampler.state().writeDiskPoint);
}

TEST(Construction, MakesEachMarkerANumberOfItsOwn) {
  TestMachine machine;
  const Sampler sampler(machine);
  const std::vector<Value>& history = sampler.state().readDiskPoint;
  for (size_t i = 1; i < history.size(); ++i) EXPECT_FALSE(history[i].isSame(history[0]));
}

TEST(Construction, LeavesTheRestOfTheStateEmpty) {
  TestMachine machine;
  const Sampler sampler(machine);
  const EngineState& state = sampler.state();
  EXPECT_EQ(state.sensorsHistory.size(), 0U);
  EXPECT_TRUE(state.workflowFile);
  EXPECT_EQ(state.workflowFile.view(), "");
  EXPECT_EQ(state.conn, 0U);
  EXPECT_FALSE(state.lastDataFetch);
  EXPECT_FALSE(state.prevTempos);
  expectZero(state.i_dsk);
  expectZero(state.o_dsk);
  expectUnusedIsUntouched(state);
}

TEST(Construction, MeansNothingToTheUnusedStateOfLaterPasses) {
  TestMachine machine;
  machine.drives = {DriveStatistics{1000, 2000}};
  Sampler sampler(machine);
  for (int pass = 0; pass < 3; ++pass) {
    machine.now += 1;
    machine.drives = {DriveStatistics{1000 + pass * 500, 2000 + pass * 500}};
    sampler.pass();
  }
  expectUnusedIsUntouched(sampler.state());
  EXPECT_EQ(sampler.state().workflowFile.view(), "");
  EXPECT_EQ(sampler.state().i_dsk.bytes_delta, 0U);
  EXPECT_EQ(sampler.state().i_dsk.bsd_bytes_prev, 0U);
  EXPECT_EQ(sampler.state().i_dsk.bsd_bytes, 0U);
  EXPECT_EQ(sampler.state().o_dsk.bytes_delta, 0U);
  EXPECT_EQ(sampler.state().o_dsk.bsd_bytes_prev, 0U);
  EXPECT_EQ(sampler.state().o_dsk.bsd_bytes, 0U);
}

TEST(Construction, AsksForTheProcessorTheCoresTheDrivesAndTheNames) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  const HalvermonteSensorsEngine engine;
  EXPECT_EQ(machine.asked, std::vector<std::string>({"system_profiler SPHardwareDataType -xml",
                                                     "hw.physicalcpu", "drives", "names"}));
}

TEST(Construction, IsTheOnlyTimeThatItsQuestionsAreAsked) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.asked.clear();
  for (int pass = 0; pass < 3; ++pass) sampler.pass();
  for (const char* question :
       {"system_profiler SPHardwareDataType -xml", "hw.physicalcpu", "drives", "names"}) {
    EXPECT_EQ(std::ranges::count(machine.asked, question), 0) << question;
  }
}

TEST(Construction, AsksForTheMainPortWithTheTasksBootstrapPort) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  const PlatformCalls calls;
  const HalvermonteSensorsEngine engine;
  EXPECT_EQ(calls.made, std::vector<std::string>{"IOMasterPort " + std::to_string(bootstrap_port)});
}

/// The variables in the order that the layout has.
TEST(Construction, LaysOutTheStateInItsOrder) {
  TestMachine machine;
  const Sampler sampler(machine);
  const EngineState& state = sampler.state();
  const std::vector<const void*> places = {&state.lastShownDate,
                                           &state.cachePath,
                                           &state.wcachePath,
                                           &state.mainAppNeedsData,
                                           &state.smcTempKeys,
                                           &state.smcVoltageKeys,
                                           &state.smcCurrentKeys,
                                           &state.smcPowerKeys,
                                           &state.smcKeyHumanReadableNames,
                                           &state.prevReadVal,
                                           &state.prevWriteVal,
                                           &state.readRate,
                                           &state.writeRate,
                                           &state.writeDiskPoint,
                                           &state.readDiskPoint,
                                           &state.workflowFile,
                                           &state.drivelist,
                                           &state.masterPort,
                                           &state.prevTempos,
                                           &state.prevPopulated,
                                           &state.conn,
                                           &state.sensorsHistory,
                                           &state.lastDataFetch,
                                           &state.i_dsk,
                                           &state.o_dsk};
  EXPECT_EQ(places.size(), 25U);
  EXPECT_EQ(places.front(), &state);
  EXPECT_TRUE(std::ranges::is_sorted(places));
  EXPECT_EQ(static_cast<const void*>(&state.o_dsk + 1), &state + 1) << "nothing follows";
}

TEST(Construction, KeepsAnIteratorOverTheDrivesAndTheMainPort) {
  TestMachine machine;
  const Sampler sampler(machine);
  EXPECT_NE(sampler.state().drivelist, 0U);
  EXPECT_NE(sampler.state().masterPort, 0U);
}

TEST(Construction, GoesOnWithoutAnIteratorIfDrivesCannotBeMatched) {
  TestMachine machine;
  machine.drives = std::nullopt;
  machine.keys["TW0P"] = sp78(40);
  Sampler sampler(machine);
  EXPECT_EQ(sampler.state().drivelist, 0U);
  machine.asked.clear();
  for (int pass = 0; pass < 2; ++pass) {
    machine.now += 1;
    sampler.pass();
    EXPECT_EQ(sampler.full(), Entries({{"Airport Proximity", "40"}}));
    EXPECT_EQ(sampler.record()->diskIO_read().uint64Value(), 0U);
    EXPECT_EQ(sampler.record()->diskIO_speedReadText(), "0 KB/s");
    EXPECT_EQ(sampler.record()->diskIO_activitiesMax().float32Value(), 50000.0F);
  }
  EXPECT_EQ(std::ranges::count(machine.asked, "walk"), 0);
}

// The handles stay with the process on purpose, as hosts have known it.
TEST(Construction, IsNotUndoneForTheDriveIterator) {
  TestMachine machine;
  machine.drives = {DriveStatistics{1, 2}};
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  Sampler(machine).pass();
  EXPECT_EQ(portable::liveObjects(), objects);
  EXPECT_EQ(portable::liveHandles(), handles + 1);
}

}  // namespace
}  // namespace halvermonte::test
