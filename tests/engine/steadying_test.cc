// CPU temperatures that arm64 builds hold against the previous pass and against the coolest GPU.
#include <gtest/gtest.h>

#include "platform/Processor.hpp"
#include "tests/engine/Records.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// What each pass shows of the sensors. No fall here is deep enough for the drop clamp, and groups
/// are not clamped.
std::vector<Entries> shown(const std::vector<HIDServices>& passes) {
  TestMachine machine;
  Sampler sampler(machine);
  std::vector<Entries> all;
  for (const HIDServices& sensors : passes) {
    machine.setTemperatureSensors(sensors);
    sampler.pass();
    all.push_back(sampler.full());
    const Entries full = all.back();
    const std::map<std::string, std::string> sorted(full.begin(), full.end());
    EXPECT_EQ(entriesOf(sampler.record()->sensors()), Entries(sorted.begin(), sorted.end()));
  }
  return all;
}

HIDService efficiency(double degrees) { return sensor("eACC MTR", degrees); }
HIDService performance(double degrees) { return sensor("pACC MTR", degrees); }
HIDService gpu(double degrees) { return sensor("GPU MTR", degrees); }
Entries efficiencyAt(const char* value) { return {{"CPU Efficiency Cores", value}}; }

class Steadying : public testing::Test {
 protected:
  void SetUp() override {
    if (kProcessor != Processor::arm64) GTEST_SKIP() << "arm64 builds alone steady CPU readings";
  }
};

TEST(SteadyingOnX86, IsNot) {
  if (kProcessor != Processor::x86_64) GTEST_SKIP() << "arm64 builds steady CPU readings";
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(50)}}).back(), efficiencyAt("50"));
  EXPECT_EQ(shown({{efficiency(40), gpu(48)}, {efficiency(40), gpu(48)}}).back(),
            Entries({{"CPU Efficiency Cores", "40"}, {"GPU Cluster", "48"}}));
  TestMachine machine;
  machine.setTemperatureSensors({efficiency(60)});
  Sampler sampler(machine);
  sampler.pass();
  EXPECT_FALSE(sampler.state().prevTempos);
}

TEST_F(Steadying, HoldsACPUThatFellByMoreThan5Degrees) {
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(50)}}).back(), efficiencyAt("60"));
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(54)}}).back(), efficiencyAt("60"));
}

TEST_F(Steadying, LetsACPUFallBy5Degrees) {
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(55)}}).back(), efficiencyAt("55"));
}

TEST_F(Steadying, HoldsAgainstWhatWasShownAndNotWhatWasRead) {
  const auto all = shown({{efficiency(60)}, {efficiency(50)}, {efficiency(50)}, {efficiency(56)}});
  EXPECT_EQ(all[2], efficiencyAt("60"));
  EXPECT_EQ(all[3], efficiencyAt("56"));
}

TEST_F(Steadying, TakesARiseAtOnce) {
  EXPECT_EQ(shown({{efficiency(40)}, {efficiency(90)}}).back(), efficiencyAt("90"));
}

TEST_F(Steadying, HoldsNothingButCPUs) {
  EXPECT_EQ(shown({{gpu(60)}, {gpu(40)}}).back(), Entries({{"GPU Cluster", "40"}}));
  EXPECT_EQ(shown({{sensor("Tg1b", 60)}, {sensor("Tg1b", 40)}}).back(),
            Entries({{"Power Management Unit", "40"}}));
}

TEST_F(Steadying, HoldsCatalogueSensorsToo) {
  TestMachine machine;
  machine.keys["TC0P"] = sp78(60);
  machine.keys["TCXC"] = sp78(60);
  machine.keys["TL0P"] = sp78(60);
  Sampler sampler(machine);
  sampler.pass();
  for (const char* key : {"TC0P", "TCXC", "TL0P"}) machine.keys[key] = sp78(40);
  sampler.pass();
  EXPECT_EQ(sampler.full(),
            Entries({{"CPU 1 Proximity", "60"}, {"LCD Proximity", "40"}, {"PECI CPU", "60"}}));
  EXPECT_EQ(sampler.mini(), Entries({{"CPU Proximity", "40"}})) << "the mini list is as read";
}

TEST_F(Steadying, LiftsACPUMoreThan5DegreesBelowTheCoolestGPU) {
  const Entries lifted = {{"CPU Efficiency Cores", "48"}, {"GPU Cluster", "48"}};
  EXPECT_EQ(shown({{}, {efficiency(40), gpu(48)}}).back(), lifted);
  EXPECT_EQ(shown({{}, {efficiency(42), gpu(48)}}).back(), lifted);
}

TEST_F(Steadying, LeavesACPUWithin5DegreesOfTheCoolestGPU) {
  EXPECT_EQ(shown({{}, {efficiency(43), gpu(48)}}).back(),
            Entries({{"CPU Efficiency Cores", "43"}, {"GPU Cluster", "48"}}));
}

TEST_F(Steadying, LiftsNothingInTheFirstPass) {
  EXPECT_EQ(shown({{efficiency(40), gpu(48)}}).back(),
            Entries({{"CPU Efficiency Cores", "40"}, {"GPU Cluster", "48"}}));
}

TEST_F(Steadying, LiftsToTheCoolestOfTheGPUs) {
  TestMachine machine;
  Sampler sampler(machine);
  sampler.pass();
  machine.keys["TG0P"] = sp78(50);
  machine.keys["TG0D"] = sp78(47);
  machine.keys["TCGC"] = sp78(60);
  machine.keys["TC0P"] = sp78(30);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"CPU 1 Proximity", "47"},
                                     {"GPU Die", "47"},
                                     {"GPU Proximity", "50"},
                                     {"PECI GPU", "60"}}));
}

TEST_F(Steadying, CountsGPUsBelow200Alone) {
  EXPECT_EQ(shown({{}, {efficiency(40), gpu(199)}}).back()[0].second, "199");
  EXPECT_EQ(shown({{}, {efficiency(40), gpu(200)}}).back()[0].second, "40");
  EXPECT_EQ(shown({{}, {efficiency(40), gpu(5000)}}).back()[0].second, "40");
}

TEST_F(Steadying, LiftsNothingWithoutAGPU) {
  EXPECT_EQ(shown({{}, {efficiency(10), sensor("Tg1b", 90)}}).back(),
            Entries({{"CPU Efficiency Cores", "10"}, {"Power Management Unit", "90"}}));
}

// Held at 60 by the previous pass, lifted to 50 by the GPU: the lift comes last.
TEST_F(Steadying, LetsTheGPUWinOverThePreviousPass) {
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(40), gpu(50)}}).back()[0].second, "50");
  EXPECT_EQ(shown({{efficiency(60)}, {efficiency(46), gpu(50)}}).back()[0].second, "60");
}

TEST_F(Steadying, JudgesEachCPUByItself) {
  EXPECT_EQ(shown({{performance(90), efficiency(50)}, {performance(80), efficiency(48)}}).back(),
            Entries({{"CPU Performance Cores", "90"}, {"CPU Efficiency Cores", "48"}}));
}

TEST_F(Steadying, ForgetsACPUThatIsAwayForAPass) {
  EXPECT_EQ(shown({{efficiency(60), gpu(50)}, {gpu(50)}, {efficiency(48), gpu(50)}}).back(),
            Entries({{"CPU Efficiency Cores", "48"}, {"GPU Cluster", "50"}}));
}

TEST_F(Steadying, KeepsTheValuesThatItPublishes) {
  TestMachine machine;
  machine.setTemperatureSensors({efficiency(60)});
  Sampler sampler(machine);
  for (const char* value : {"60", "60", "60"}) {
    sampler.pass();
    EXPECT_EQ(entriesOf(sampler.state().prevTempos), efficiencyAt(value));
    EXPECT_EQ(entriesOf(sampler.record()->sensors()), efficiencyAt(value));
    machine.setTemperatureSensors({efficiency(50)});
  }
}

// The list is empty, and the dictionary still there: it goes on being steadied.
TEST_F(Steadying, RunsOnTheOldDictionaryIfTheListIsEmpty) {
  TestMachine machine;
  machine.setTemperatureSensors({efficiency(60)});
  Sampler sampler(machine);
  sampler.pass();
  machine.setTemperatureSensors({});
  sampler.record()->setSensors(Dictionary({{Text("CPU Efficiency Cores"), Text("20")}}));
  sampler.pass();
  EXPECT_EQ(entriesOf(sampler.record()->sensors()), efficiencyAt("60"));
  EXPECT_EQ(sampler.record()->sensors_temperature(), "");
  EXPECT_EQ(sampler.record()->sensors_temperatureData(), "");
}

TEST_F(Steadying, DropsNamesWithoutAnEntryFromTheTexts) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  class Remembering : public DivertingRecord {
   public:
    std::vector<std::string> names;
    std::vector<std::string> values;
    void setSensors_temperature(Text value) override { names.emplace_back(value.view()); }
    void setSensors_temperatureData(Text value) override { values.emplace_back(value.view()); }
  };
  const auto record = std::make_shared<Remembering>();
  record->temperatures = Text("\nA\n\nB\nA\nrest");
  record->temperatureValues = Text("1\n2\n3\n4\n5\n6");
  engine.getSensorsInfo(record);
  // A name that stands twice has the later value in both places.
  EXPECT_EQ(record->names.back(), "A\nB\nA\n");
  EXPECT_EQ(record->values.back(), "5\n4\n5\n");
}

TEST_F(Steadying, ReadsAValueAsTheIntegerThatItBeginsWith) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<DivertingRecord>();
  record->temperatures = Text("CPU 1\nCPU 2\nCPU 3\nCPU 4\nCPU 5\n");
  record->temperatureValues = Text("60.9\n  -3 degrees\n+70\nhot\n99999999999999999999\n");
  engine.getSensorsInfo(record);
  record->temperatureValues = Text("50\n-9\n64\n-6\n5\n");
  engine.getSensorsInfo(record);
  EXPECT_EQ(entriesOf(record->sensors()), Entries({{"CPU 1", "60"},
                                                   {"CPU 2", "-3"},
                                                   {"CPU 3", "70"},
                                                   {"CPU 4", "0"},
                                                   {"CPU 5", "9223372036854775807"}}));
}

TEST_F(Steadying, StartsAnewIfTheRecordHasNoDictionary) {
  TestMachine machine;
  machine.setTemperatureSensors({efficiency(60)});
  Sampler sampler(machine);
  sampler.pass();
  machine.setTemperatureSensors({});
  sampler.record()->setSensors(Dictionary());
  sampler.pass();
  EXPECT_FALSE(sampler.record()->sensors());
  machine.setTemperatureSensors({efficiency(20)});
  sampler.pass();
  EXPECT_EQ(sampler.full(), efficiencyAt("20"));
}

}  // namespace
}  // namespace halvermonte::test
