#include "monitor/PassView.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>

#include "monitor/Sampling.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using std::chrono::steady_clock;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::chrono::milliseconds kReadTime{3};

// Takes its time to read its sensors.
class SlowMachine : public TestMachine {
 public:
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    const auto end = steady_clock::now() + kReadTime;
    while (steady_clock::now() < end) continue;
    return TestMachine::hidServices(kind);
  }
};

TEST(PassView, NamesTheMachineAndItsProcessor) {
  auto machine = std::make_unique<TestMachine>();
  machine->setProcessor("Apple M1");
  machine->kernelVariables["hw.physicalcpu"] = 8;
  Sampling sampling({.machine = std::move(machine), .title = "desk", .isSimulated = true});
  const PassView& view = sampling.pass();
  EXPECT_EQ(view.title, "desk");
  EXPECT_TRUE(view.isSimulated);
  EXPECT_EQ(view.hostName, "test");
  EXPECT_EQ(view.processor, "Apple M1");
  EXPECT_EQ(view.cores, 8);
  EXPECT_FALSE(view.exception);
}

TEST(PassView, DisksHaveRatesTotalsAndHistories) {
  auto owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  machine.drives = {DriveStatistics{1000, 2000}};
  Sampling sampling({.machine = std::move(owned)});
  sampling.pass();
  machine.now += 1;
  machine.drives = {DriveStatistics{5'001'000, 7'002'000}};
  const DisksView& disks = sampling.pass().disks;
  EXPECT_EQ(disks.read.rate, 5'000'000);
  EXPECT_EQ(disks.read.rateText, "5 MB/s");
  EXPECT_EQ(disks.read.total, 5'001'000U);
  EXPECT_EQ(disks.read.totalText, "5 MB");
  EXPECT_THAT(disks.read.history, SizeIs(75));
  EXPECT_EQ(disks.read.history.back(), 5'000'000);
  EXPECT_EQ(disks.read.history.front(), -1) << "no rate yet";
  EXPECT_EQ(disks.written.rate, 7'000'000);
  EXPECT_EQ(disks.written.total, 7'002'000U);
  EXPECT_EQ(disks.written.history.back(), 7'000'000);
  EXPECT_EQ(disks.historyScale, 10'000'000);
  EXPECT_EQ(disks.historyScaleText, "10 MB");
}

TEST(PassView, SensorsOfOneNameAreTwoSensors) {
  auto machine = std::make_unique<TestMachine>();
  machine->keys["FNum"] = ui8(2);
  for (const char* fan : {"F0", "F1"}) {
    machine->keys[std::string(fan) + "ID"] = fanDescriptor("Exhaust");
    machine->keys[std::string(fan) + "Ac"] = fpe2(1200);
  }
  Sampling sampling({.machine = std::move(machine)});
  EXPECT_THAT(sampling.pass().fans, ElementsAre(Field(&SensorView::identity, "Exhaust"),
                                                Field(&SensorView::identity, "Exhaust (2)")));
}

TEST(PassView, TemperaturesOfTheShortListFollowUnlessTheFullListHasThem) {
  auto machine = std::make_unique<TestMachine>();
  machine->keys["TB3T"] = flt(30);  // "Battery" in the full list, "Enclosure 3" in the short one
  machine->keys["TB0T"] = flt(31);  // "Battery" and "Enclosure" in the short one
  Sampling sampling({.machine = std::move(machine)});
  EXPECT_THAT(sampling.pass().temperatures,
              ElementsAre(SensorView{"Battery", 30, "Battery", InLists::both},
                          SensorView{"Battery TS_MAX", 31, "Battery TS_MAX", InLists::full},
                          SensorView{"Enclosure", 31, "Enclosure", InLists::shortAlone},
                          SensorView{"Enclosure 3", 30, "Enclosure 3", InLists::shortAlone}));
}

TEST(PassView, TimeIsTheMachines) {
  Sampling sampling({.machine = std::make_unique<TestMachine>()});
  EXPECT_EQ(sampling.pass().time, 1'000'000);
}

TEST(PassView, RecordWithoutHistoriesHasNone) {
  const auto record = std::make_shared<StatisticsData>();
  PassView view;
  readRecord(record, view);
  EXPECT_EQ(view.record, record);
  EXPECT_THAT(view.disks.read.history, IsEmpty());
  EXPECT_THAT(view.disks.written.history, IsEmpty());
}

TEST(PassView, CostIsTheTimeThatThePassTook) {
  Sampling sampling({.machine = std::make_unique<SlowMachine>()});
  const auto start = steady_clock::now();
  const auto cost = sampling.pass().cost;
  EXPECT_GE(cost, kReadTime);
  EXPECT_LE(cost, steady_clock::now() - start);
}

}  // namespace
}  // namespace halvermonte::test
