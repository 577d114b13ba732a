// What ends a pass, what does not, and what is left after it.
#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "platform/Foundation.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/engine/Records.hpp"
#include "tests/support/RecordTexts.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using Described = std::map<std::string, std::string>;

/// A machine of one sensor of each sort, a fan and two drives.
void fill(TestMachine& machine) {
  machine.keys["TW0P"] = sp78(40);
  machine.setTemperatureSensors({sensor("GPU MTR Temp Sensor1", 50), sensor("Tg1b", 30)});
  machine.keys["FNum"] = ui8(1);
  machine.keys["F0Ac"] = fpe2(1200);
  machine.drives = {DriveStatistics{1000, 2000}, DriveStatistics{3000, 4000}};
}

void nextTick(TestMachine& machine) {
  machine.now += 1;
  machine.drives = {DriveStatistics{1500, 2700}, DriveStatistics{3500, 4700}};
}

/// The second pass of an engine to which nothing happened in the first.
Described secondPass() {
  TestMachine machine;
  fill(machine);
  Sampler sampler(machine);
  sampler.pass();
  nextTick(machine);
  return described(sampler.pass());
}

/// Interrupts whatever answers it is told to.
class InterruptingMachine : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;
  std::function<void()> beforeWalk = [] {};
  std::function<void(size_t)> beforeDrive = [](size_t) {};
  std::function<void()> beforeKey = [] {};
  /// The first of a pass's two lists of sensors has one less.
  bool forgetsAReading = false;

  void beginDriveWalk() override {
    beforeWalk();
    MachineWrapper::beginDriveWalk();
  }
  Drive drive(size_t index) override {
    beforeDrive(index);
    return MachineWrapper::drive(index);
  }
  SMCKeyInfo smcKeyInfo(uint32_t key) override {
    beforeKey();
    return MachineWrapper::smcKeyInfo(key);
  }
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    const auto list = MachineWrapper::hidServices(kind);
    if (!std::exchange(forgetsAReading, false)) return list;
    return services(HIDServices(list->begin(), list->end() - 1));
  }
};

/// An engine over a machine that can be interrupted.
struct Interrupted {
  TestMachine machine;
  InterruptingMachine interrupting{machine};
  std::optional<Sampler> sampler;
  size_t objects = 0;
  size_t handles = 0;

  Interrupted() {
    fill(machine);
    sampler.emplace(interrupting);
    objects = portable::liveObjects();
    handles = portable::liveHandles();
  }
  void expectNothingLeft() const {
    EXPECT_EQ(portable::liveObjects(), objects);
    EXPECT_EQ(portable::liveHandles(), handles);
  }
};

TEST(RangeExceptions, EndThePassIfASensorHasANameAndNoReading) {
  Interrupted engine;
  const auto record = std::make_shared<LoggingRecord>();
  engine.interrupting.forgetsAReading = true;
  EXPECT_THROW(engine.sampler->engine().getSensorsInfo(record), RangeException);
  EXPECT_EQ(record->stored, std::vector<std::string>());
  EXPECT_EQ(record.use_count(), 1);
}

TEST(RangeExceptions, TellWhichIndexIsMissing) {
  Interrupted engine;
  engine.interrupting.forgetsAReading = true;
  try {
    engine.sampler->pass();
    FAIL() << "nothing was raised";
  } catch (const PlatformException& exception) {
    EXPECT_NE(exception.reason().find("index 1 beyond the 1"), std::string::npos)
        << exception.reason();
  }
}

TEST(RangeExceptions, LeaveNothingOpen) {
  Interrupted engine;
  engine.interrupting.forgetsAReading = true;
  EXPECT_THROW(engine.sampler->pass(), RangeException);
  EXPECT_EQ(engine.machine.asked.back(), "close");
  engine.expectNothingLeft();
}

TEST(RangeExceptions, LeaveTheNextPassWhole) {
  const Described expected = secondPass();
  Interrupted engine;
  engine.interrupting.forgetsAReading = true;
  EXPECT_THROW(engine.sampler->pass(), RangeException);
  nextTick(engine.machine);
  EXPECT_EQ(described(engine.sampler->pass()), expected);
}

TEST(RangeExceptions, AreNotRaisedIfThereAreMoreReadingsThanNames) {
  class Generous : public MachineWrapper {
   public:
    using MachineWrapper::MachineWrapper;
    std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
      HIDServices list = *MachineWrapper::hidServices(kind);
      if (++asked_ % 2 == 1) list.push_back(sensor("SOC MTR Temp Sensor0", 20));
      return services(list);
    }

   private:
    int asked_ = 0;
  };
  TestMachine machine;
  machine.setTemperatureSensors({sensor("Tg1b", 30)});
  Generous generous(machine);
  Sampler sampler(generous);
  sampler.pass();
  EXPECT_EQ(sampler.full(), Entries({{"Power Management Unit", "30"}}));
}

/// The lines that a pass writes to standard error.
std::vector<std::string> linesOf(const std::function<void()>& pass) {
  testing::internal::CaptureStderr();
  pass();
  std::istringstream captured(testing::internal::GetCapturedStderr());
  std::vector<std::string> lines;
  for (std::string line; std::getline(captured, line);) lines.push_back(line);
  return lines;
}

TEST(DiskGuard, LogsOneLineWithTheReasonAndFinishesThePass) {
  Interrupted engine;
  engine.interrupting.beforeWalk = [] { throw PlatformException("the drives are on strike"); };
  const auto record = std::make_shared<StatisticsData>();
  std::shared_ptr<StatisticsData> returned;
  const auto lines = linesOf([&] { returned = engine.sampler->engine().getSensorsInfo(record); });
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(lines[0].ends_with("the drives are on strike")) << lines[0];
  EXPECT_EQ(returned, record);
  EXPECT_EQ(entriesOf(record->sensors_fans(), record->sensors_fansData()),
            Entries({{"Fan 1", "1200"}}));
  EXPECT_EQ(record->diskIO_readText(), "Zero KB");
  engine.expectNothingLeft();
}

TEST(DiskGuard, LogsTheReasonAsItStands) {
  Interrupted engine;
  engine.interrupting.beforeWalk = [] { throw PlatformException("100% of %@, %s and %d"); };
  const auto lines = linesOf([&] { engine.sampler->pass(); });
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(lines[0].ends_with(" 100% of %@, %s and %d")) << lines[0];
}

TEST(DiskGuard, TakesWhatIsDerivedFromAPlatformException) {
  Interrupted engine;
  engine.interrupting.beforeWalk = [] { throw RangeException("one drive too many"); };
  const auto lines = linesOf([&] { engine.sampler->pass(); });
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_TRUE(lines[0].ends_with("one drive too many"));
}

TEST(DiskGuard, IsSilentIfNothingIsRaised) {
  Interrupted engine;
  EXPECT_EQ(linesOf([&] { engine.sampler->pass(); }), std::vector<std::string>());
}

// The first drive's bytes count for nothing then, and the walk starts anew in the next pass.
TEST(DiskGuard, KeepsTheTotalsOfBeforeIfTheWalkBreaksOffHalfway) {
  Interrupted engine;
  engine.sampler->pass();
  nextTick(engine.machine);
  engine.interrupting.beforeDrive = [](size_t index) {
    if (index == 1) throw PlatformException("the second drive is on strike");
  };
  EXPECT_EQ(linesOf([&] { engine.sampler->pass(); }).size(), 1U);
  EXPECT_EQ(engine.sampler->record()->diskIO_read().uint64Value(), 4000U);
  EXPECT_EQ(engine.sampler->record()->diskIO_write().uint64Value(), 6000U);
  EXPECT_EQ(engine.sampler->state().readDiskPoint.back().asNumber().uint64Value(), 0U);
  engine.expectNothingLeft();

  engine.interrupting.beforeDrive = [](size_t) {};
  engine.machine.now += 1;
  engine.sampler->pass();
  EXPECT_EQ(engine.sampler->record()->diskIO_read().uint64Value(), 5000U);
  EXPECT_EQ(engine.sampler->state().readDiskPoint.back().asNumber().uint64Value(), 1000U);
  engine.expectNothingLeft();
}

TEST(DiskGuard, LetsEveryOtherExceptionPass) {
  Interrupted engine;
  engine.interrupting.beforeWalk = [] { throw std::bad_alloc(); };
  EXPECT_EQ(linesOf([&] { EXPECT_THROW(engine.sampler->pass(), std::bad_alloc); }).size(), 0U);
  engine.interrupting.beforeWalk = [] { throw std::runtime_error("not the platform's"); };
  EXPECT_EQ(linesOf([&] { EXPECT_THROW(engine.sampler->pass(), std::runtime_error); }).size(), 0U);
  engine.interrupting.beforeWalk = [] { throw 42; };
  EXPECT_EQ(linesOf([&] { EXPECT_THROW(engine.sampler->pass(), int); }).size(), 0U);
  engine.expectNothingLeft();
}

TEST(DiskGuard, IsThePassesOnlyOne) {
  Interrupted engine;
  engine.interrupting.beforeKey = [] { throw PlatformException("the controller is on strike"); };
  EXPECT_EQ(linesOf([&] { EXPECT_THROW(engine.sampler->pass(), PlatformException); }).size(), 0U);
  EXPECT_EQ(engine.machine.asked.back(), "close");
  engine.expectNothingLeft();
}

TEST(RecordExceptions, PassAndLeaveTheNextPassWhole) {
  const Described expected = secondPass();
  Interrupted engine;
  const auto refusing = std::make_shared<RefusingRecord>();
  refusing->refuses = true;
  EXPECT_THROW(engine.sampler->engine().getSensorsInfo(refusing), std::runtime_error);
  EXPECT_EQ(refusing.use_count(), 1);
  engine.expectNothingLeft();
  nextTick(engine.machine);
  EXPECT_EQ(described(engine.sampler->pass()), expected);
}

}  // namespace
}  // namespace halvermonte::test
