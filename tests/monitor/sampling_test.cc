#include "monitor/Sampling.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/simulated/MachineTexts.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using ::testing::StartsWith;

// Its first list of sensors, of which the values are taken, is shorter than the next, of the names.
class ForgetfulComputer : public TestMachine {
 public:
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind) override {
    return services(++asked == 1 ? HIDServices() : HIDServices{sensor("gas gauge battery", 30)});
  }

 private:
  int asked = 0;
};

// Says how long it has been up, a minute longer each time.
class TalkativeComputer : public TestMachine {
 public:
  std::optional<HostFacts> hostFacts() override {
    uptime += 60;
    HostFacts facts;
    facts.uptime = uptime;
    return facts;
  }

 private:
  uint64_t uptime = 0;
};

TEST(Sampling, SimulatedMachineMovesOnBeforeEachPassButTheFirst) {
  auto machine = machineOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 40})") + "," +
                           tickOfKeys(R"("TC0P": {"type": "sp78", "value": 41})"));
  Sampling sampling({.machine = std::move(machine)});
  EXPECT_EQ(sampling.pass().temperatures.front().number, 40);
  EXPECT_EQ(sampling.pass().temperatures.front().number, 41);
}

TEST(Sampling, MachineThatSaysNothingAboutItselfLeavesTheHostsProperties) {
  auto machine = machineOf("{}", R"("processor": {"chip_type": "Apple M1"}, )");
  Sampling sampling({.machine = std::move(machine)});
  const PassView& view = sampling.pass();
  EXPECT_EQ(view.processor, "Apple M1");
  EXPECT_EQ(view.record->processorName(), "");
  EXPECT_EQ(view.uptime, "");
}

TEST(Sampling, HostsPropertiesAreFilledAfreshInEachPass) {
  auto machine = std::make_unique<TalkativeComputer>();
  machine->setProcessor("Apple M1");
  Sampling sampling({.machine = std::move(machine)});
  EXPECT_EQ(sampling.pass().uptime, "1 min");
  EXPECT_EQ(sampling.view().record->processorName(), "Apple M1");
  EXPECT_EQ(sampling.pass().uptime, "2 min");
}

TEST(Sampling, ExceptionEndsThatPassAlone) {
  Sampling sampling({.machine = std::make_unique<ForgetfulComputer>()});
  EXPECT_THAT(sampling.pass().exception, Optional(HasSubstr("index")));
  EXPECT_EQ(sampling.pass().exception, std::nullopt);
  EXPECT_EQ(sampling.view().temperatures.front().name, "Gas Gauge Battery");
}

TEST(Sampling, PassMadeAheadOfTimeIsReturnedOnce) {
  auto owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  machine.keys["TC0P"] = sp78(40);
  Sampling sampling({.machine = std::move(owned)});
  EXPECT_EQ(sampling.firstPass().temperatures.front().number, 40);
  EXPECT_FALSE(sampling.hasPassed());
  machine.keys["TC0P"] = sp78(41);
  EXPECT_EQ(sampling.pass().temperatures.front().number, 40);
  EXPECT_EQ(sampling.view().number, 0U);
  EXPECT_EQ(sampling.pass().temperatures.front().number, 41);
  EXPECT_EQ(sampling.view().number, 1U);
}

// Notes when a pass begins to read the drives and when it goes on to the controller.
class TimedComputer : public TestMachine {
 public:
  void beginDriveWalk() override { began = std::chrono::steady_clock::now(); }
  SMCService smcService() override {
    wentOn = std::chrono::steady_clock::now();
    return TestMachine::smcService();
  }

  std::chrono::steady_clock::time_point began, wentOn;
};

TEST(Sampling, PassSaysWhenItHadCountedTheDrivesBytes) {
  auto owned = std::make_unique<TimedComputer>();
  const TimedComputer& machine = *owned;
  owned->drives = {DriveStatistics{1000, 2000}};
  Sampling sampling({.machine = std::move(owned)});
  for (int i = 0; i < 2; ++i) {
    const auto counted = sampling.pass().counted;
    EXPECT_LT(machine.began, counted);
    EXPECT_LT(counted, machine.wentOn);
  }
}

TEST(Sampling, ComplaintsOfTheEngineAreCollectedOnceWhileTheyRepeat) {
  auto owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  machine.openCode = kCodeError;
  Sampling sampling({.machine = std::move(owned)});
  HeldMessages messages(HeldMessages::Streams::output);
  sampling.collectComplaints(messages);
  const std::string complaint = "Error: IOServiceOpen() = e00002bc";
  EXPECT_THAT(sampling.pass().complaints, ElementsAre(complaint));
  EXPECT_THAT(sampling.pass().complaints, IsEmpty());
  machine.openCode = kCodeSuccess;
  EXPECT_THAT(sampling.pass().complaints, IsEmpty());
  machine.openCode = kCodeError;
  EXPECT_THAT(sampling.pass().complaints, ElementsAre(complaint));
}

// Counts how often it was asked for a process.
class ComputerOfProcesses : public TestMachine {
 public:
  Process process(int32_t identifier) override {
    identifiers.push_back(identifier);
    return ProcessTimes{};
  }

  std::vector<int32_t> identifiers;
};

TEST(Sampling, ProcessIsInTheViewOnlyIfSomebodyAsksForIt) {
  Sampling sampling({.machine = std::make_unique<ComputerOfProcesses>()});
  EXPECT_FALSE(sampling.pass().process);
  sampling.watchProcess(42);
  ASSERT_TRUE(sampling.pass().process);
  EXPECT_EQ(sampling.view().process->identifier, 42);
}

TEST(Sampling, WatchedProcessIsAskedForOnceInEachPassAndWithoutACommand) {
  auto owned = std::make_unique<ComputerOfProcesses>();
  ComputerOfProcesses& machine = *owned;
  Sampling sampling({.machine = std::move(owned)});
  sampling.watchProcess(42);
  machine.identifiers.clear();
  sampling.pass();
  sampling.pass();
  EXPECT_THAT(machine.identifiers, ElementsAre(42, 42));
  EXPECT_THAT(machine.asked, Not(Contains(StartsWith("ps "))));
}

TEST(MakePasses, ShowsAsManyPassesAsAreAskedFor) {
  Options options;
  options.interval = 0;
  const Pause pause(options);
  Sampling sampling({.machine = std::make_unique<TestMachine>()});
  std::vector<uint64_t> shown;
  const auto show = [&shown](const PassView& view) { shown.push_back(view.number); };
  EXPECT_EQ(makePasses(sampling, pause, 2, show), 2U);
  EXPECT_EQ(makePasses(sampling, pause, 1, show), 1U);
  EXPECT_THAT(shown, ElementsAre(0, 1, 2));
}

}  // namespace
}  // namespace halvermonte::test
