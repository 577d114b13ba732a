#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "platform/Foundation.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

TEST(CurrentMachineTest, ScopesNest) {
  TestMachine outer;
  TestMachine inner;
  const ScopedMachine outerScope(outer);
  EXPECT_EQ(&Machine::current(), &outer);
  {
    const ScopedMachine innerScope(inner);
    EXPECT_EQ(&Machine::current(), &inner);
    const ScopedMachine outerAgain(outer);
    EXPECT_EQ(&Machine::current(), &outer);
  }
  EXPECT_EQ(&Machine::current(), &outer);
}

TEST(CurrentMachineTest, TheProcesssMachineAnswersThreadsWithoutOneOfTheirOwn) {
  TestMachine ofProcess;
  TestMachine scoped;
  Machine::setProcessMachine(&ofProcess);
  const ScopedMachine scope(scoped);
  Machine* seen = nullptr;
  std::jthread([&] { seen = &Machine::current(); }).join();
  EXPECT_EQ(seen, &ofProcess);
  EXPECT_EQ(&Machine::current(), &scoped);
  Machine::setProcessMachine(nullptr);
}

TEST(CurrentMachineTest, WithoutAnyThisComputerAnswers) {
  EXPECT_TRUE(Machine::current().isThisComputer());
  EXPECT_EQ(&Machine::current(), &Machine::current());
}

TEST(CurrentMachineTest, TheDefaultsAreAnEmptyComputer) {
  Machine machine;
  EXPECT_FALSE(machine.isThisComputer());
  EXPECT_FALSE(machine.smcService().present);
  EXPECT_EQ(machine.smcService().code, 0u);
  EXPECT_EQ(machine.openSMC(), 0u);
  EXPECT_TRUE(machine.answersWideCalls());
  EXPECT_EQ(machine.smcKeyInfo(0).result, 0x84);
  EXPECT_EQ(machine.smcKeyBytes(0).result, 0x84);
  EXPECT_TRUE(machine.hidServices(HIDSensorKind::temperature)->empty());
  EXPECT_EQ(machine.driveCount(), 0u);
  EXPECT_EQ(machine.clock(), 0.0);
  EXPECT_FALSE(machine.localizedHostName());
  EXPECT_EQ(machine.outputOfCommand("ps"), "");
  EXPECT_FALSE(machine.kernelVariable("hw.physicalcpu"));
}

TEST(CurrentMachineTest, AWrapperForwardsEveryQuestion) {
  TestMachine inner;
  inner.controller = {.code = 7, .present = true};
  inner.openCode = 8;
  inner.wideCalls = false;
  inner.keys["TC0P"] = sp78(42);
  inner.sensors[HIDSensorKind::current] = services({sensor("a", 1)});
  inner.drives = {DriveStatistics{1, 2}};
  inner.commands["ps"] = "printed";
  inner.kernelVariables["hw.physicalcpu"] = 4;
  MachineWrapper wrapper(inner);
  const uint32_t key = fourCharacterCode("TC0P");
  EXPECT_EQ(wrapper.name(), inner.name());
  EXPECT_EQ(wrapper.isThisComputer(), inner.isThisComputer());
  EXPECT_EQ(wrapper.smcService().code, 7u);
  EXPECT_EQ(wrapper.openSMC(), 8u);
  wrapper.closeSMC();
  EXPECT_EQ(inner.asked.back(), "close");
  EXPECT_FALSE(wrapper.answersWideCalls());
  EXPECT_EQ(wrapper.smcKeyInfo(key).dataSize, 2u);
  EXPECT_EQ(wrapper.smcKeyBytes(key).bytes[0], 42);
  EXPECT_EQ(wrapper.hidServices(HIDSensorKind::current), inner.sensors[HIDSensorKind::current]);
  EXPECT_EQ(wrapper.driveCount(), 1u);
  wrapper.beginDriveWalk();
  EXPECT_EQ(inner.asked.back(), "walk");
  EXPECT_EQ(std::get<DriveStatistics>(wrapper.drive(0)).bytesWritten, 2);
  EXPECT_EQ(wrapper.clock(), inner.now);
  EXPECT_EQ(wrapper.localizedHostName(), inner.hostName);
  EXPECT_EQ(wrapper.outputOfCommand("ps"), "printed");
  EXPECT_EQ(wrapper.kernelVariable("hw.physicalcpu"), 4);
}

/// For the thread sanitizer too.
TEST(CurrentMachineTest, TwoThreadsSampleTwoMachines) {
  const auto sampleMany = [](double degrees, const char* host, std::latch& start, int& wrong) {
    TestMachine machine;
    machine.hostName = host;
    machine.keys["TC0P"] = sp78(degrees);
    machine.setTemperatureSensors({sensor("Tg1b", degrees), sensor("other", 1)});
    machine.drives = {DriveStatistics{10, 20}};
    start.arrive_and_wait();
    Sampler sampler(machine);
    const std::string shown = std::to_string(static_cast<int>(degrees));
    const Entries expected = {{"Power Management Unit", shown}, {"CPU 1 Proximity", shown}};
    for (int pass = 0; pass < 50; ++pass) {
      sampler.pass();
      wrong += sampler.full() != expected;
      wrong += sampler.record()->hostName() != host;
      machine.asked.clear();
    }
  };
  int wrong[2] = {};
  std::latch start(2);
  std::jthread first([&] { sampleMany(40, "first", start, wrong[0]); });
  sampleMany(60, "second", start, wrong[1]);
  first.join();
  EXPECT_EQ(wrong[0], 0);
  EXPECT_EQ(wrong[1], 0);
}

}  // namespace
}  // namespace halvermonte::test
