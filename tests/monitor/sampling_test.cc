#include "monitor/Sampling.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "tests/simulated/MachineTexts.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Optional;

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
    HostFacts facts;
    facts.uptime = uptime += 60;
    return facts;
  }

 private:
  uint64_t uptime = 0;
};

TEST(Sampling, SimulatedMachineMovesOnBeforeEachPassButTheFirst) {
  auto machine = machineOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 40})") + "," +
                           tickOfKeys(R"("TC0P": {"type": "sp78", "value": 41})"));
  Sampling sampling({.machine = std::move(machine)});
  sampling.pass();
  EXPECT_EQ(sampling.record().sensors_temperatureData().view(), "40\n");
  sampling.pass();
  EXPECT_EQ(sampling.record().sensors_temperatureData().view(), "41\n");
}

TEST(Sampling, MachineThatSaysNothingAboutItselfLeavesTheHostsProperties) {
  auto machine = machineOf("{}", R"("processor": {"chip_type": "Apple M1"}, )");
  Sampling sampling({.machine = std::move(machine)});
  sampling.pass();
  EXPECT_EQ(sampling.record().uptimeText().view(), "");
  EXPECT_EQ(sampling.record().processorName().view(), "");
}

TEST(Sampling, HostsPropertiesAreFilledAfreshInEachPass) {
  auto machine = std::make_unique<TalkativeComputer>();
  machine->setProcessor("Apple M1");
  Sampling sampling({.machine = std::move(machine)});
  sampling.pass();
  EXPECT_EQ(sampling.record().processorName().view(), "Apple M1");
  EXPECT_EQ(sampling.record().uptimeText().view(), "1 min");
  sampling.pass();
  EXPECT_EQ(sampling.record().uptimeText().view(), "2 min");
}

TEST(Sampling, ExceptionEndsThatPassAlone) {
  Sampling sampling({.machine = std::make_unique<ForgetfulComputer>()});
  EXPECT_THAT(sampling.pass(), Optional(HasSubstr("index")));
  EXPECT_EQ(sampling.pass(), std::nullopt);
  EXPECT_EQ(sampling.record().sensors_temperature().view(), "Gas Gauge Battery\n");
}

}  // namespace
}  // namespace halvermonte::test
