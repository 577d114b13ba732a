#include "monitor/ProcessWatch.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "monitor/Failure.hpp"
#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte::test {
namespace {

using std::chrono::milliseconds;
using ::testing::Optional;

constexpr ProcessWatch::Clock::time_point kBegin{std::chrono::hours(1)};

// A computer of one process, which has used a hundred seconds.
class OneProcess : public Machine {
 public:
  Process process(int32_t identifier) override {
    ++asked;
    return identifier == 42 ? answer : NoProcess{};
  }
  void uses(double seconds) { std::get<ProcessTimes>(answer).cpuSeconds += seconds; }

  Process answer = ProcessTimes{.cpuSeconds = 100, .start = 7};
  int asked = 0;
};

class Watched : public ::testing::Test {
 protected:
  ProcessUse useAfter(milliseconds time) { return watch.use(kBegin + time); }

  OneProcess machine;
  ProcessWatch watch{machine, 42, kBegin};
};

std::string complaint(Machine& machine, int32_t identifier) {
  try {
    const ProcessWatch watch(machine, identifier, kBegin);
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.status(), ExitStatus::failure);
    return failure.what();
  }
  return "(none)";
}

TEST_F(Watched, UseIsThatOfTheTimeSinceThePassBefore) {
  machine.uses(0.5);
  EXPECT_THAT(useAfter(milliseconds(2000)).percentOfOneCore, Optional(25.0F));
  machine.uses(0.75);
  EXPECT_THAT(useAfter(milliseconds(3000)).percentOfOneCore, Optional(75.0F));
}

TEST_F(Watched, IdleProcessUsesNothingHoweverMuchItUsedBefore) {
  EXPECT_THAT(useAfter(milliseconds(1000)).percentOfOneCore, Optional(0.0F));
}

TEST_F(Watched, TwoBusyThreadsUseTwoCores) {
  machine.uses(2);
  EXPECT_THAT(useAfter(milliseconds(1000)).percentOfOneCore, Optional(200.0F));
}

TEST_F(Watched, UseIsNotKnownBeforeTheFirstMeasurementEnds) {
  machine.uses(0.01);
  const ProcessUse use = useAfter(milliseconds(1));
  EXPECT_EQ(use.identifier, 42);
  EXPECT_EQ(use.percentOfOneCore, std::nullopt);
  EXPECT_FALSE(use.hasEnded);
}

TEST_F(Watched, UseStaysUntilThereWasTimeToMeasureItAgain) {
  machine.uses(0.5);
  EXPECT_THAT(useAfter(milliseconds(500)).percentOfOneCore, Optional(100.0F));
  machine.uses(0.1);
  EXPECT_THAT(useAfter(milliseconds(999)).percentOfOneCore, Optional(100.0F));
  machine.uses(0.15);
  EXPECT_THAT(useAfter(milliseconds(1000)).percentOfOneCore, Optional(50.0F));
}

TEST_F(Watched, EndedProcessHasNoUseAndIsNotAskedForAgain) {
  useAfter(milliseconds(1000));
  machine.answer = NoProcess{};
  EXPECT_TRUE(useAfter(milliseconds(2000)).hasEnded);
  const int asked = machine.asked;
  machine.answer = ProcessTimes{.cpuSeconds = 101, .start = 7};
  const ProcessUse use = useAfter(milliseconds(3000));
  EXPECT_TRUE(use.hasEnded);
  EXPECT_EQ(use.percentOfOneCore, std::nullopt);
  EXPECT_EQ(machine.asked, asked);
}

TEST_F(Watched, ProcessThatGotTheIdentifierLaterIsNotTakenForTheFormerOne) {
  machine.answer = ProcessTimes{.cpuSeconds = 101, .start = 8};
  const ProcessUse use = useAfter(milliseconds(1000));
  EXPECT_TRUE(use.hasEnded);
  EXPECT_EQ(use.percentOfOneCore, std::nullopt);
}

TEST_F(Watched, ProcessThatCannotBeReadForAMomentHasNotEnded) {
  useAfter(milliseconds(1000));
  machine.answer = UnreadableProcess{"Too many open files"};
  const ProcessUse use = useAfter(milliseconds(2000));
  EXPECT_EQ(use.percentOfOneCore, std::nullopt);
  EXPECT_FALSE(use.hasEnded);
  machine.answer = ProcessTimes{.cpuSeconds = 101, .start = 7};
  EXPECT_THAT(useAfter(milliseconds(3000)).percentOfOneCore, Optional(50.0F));
}

TEST(ProcessWatch, ProcessThatDoesNotExistIsAFailure) {
  OneProcess machine;
  EXPECT_EQ(complaint(machine, 4711), "--pid 4711: there is no such process");
}

TEST(ProcessWatch, ProcessThatMayNotBeReadIsAFailureWithTheReason) {
  OneProcess machine;
  machine.answer = UnreadableProcess{"Permission denied"};
  EXPECT_EQ(complaint(machine, 42), "--pid 42: Permission denied");
}

TEST(ProcessWatch, SimulatedMachineHasNoProcesses) {
  const std::unique_ptr<Machine> machine = machineOf("{}");
  EXPECT_EQ(complaint(*machine, 1), "--pid 1: a simulated machine has no processes");
}

}  // namespace
}  // namespace halvermonte::test
