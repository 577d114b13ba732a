#include "monitor/Sampling.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "tests/linux/Tree.hpp"
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

class SamplingTest : public ::testing::Test {
 protected:
  SamplingTest() {
    options.sys = tree.at("sys");
    options.proc = tree.at("proc");
  }

  Tree tree;
  Options options;
};

TEST_F(SamplingTest, SimulatedMachineGoesOnBeforeEachPassButTheFirst) {
  auto machine = machineOf(tickOfKeys(R"("TC0P": {"type": "sp78", "value": 40})") + "," +
                           tickOfKeys(R"("TC0P": {"type": "sp78", "value": 41})"));
  Sampling sampling(*machine, true, options);
  sampling.pass();
  EXPECT_EQ(sampling.record().sensors_temperatureData().view(), "40\n");
  sampling.pass();
  EXPECT_EQ(sampling.record().sensors_temperatureData().view(), "41\n");
}

TEST_F(SamplingTest, NothingIsFilledOnAMachineFromAFile) {
  tree.write("proc/uptime", "100.5 1\n");
  auto machine = machineOf("{}", R"("processor": {"chip_type": "Apple M1"}, )");
  Sampling sampling(*machine, true, options);
  sampling.pass();
  EXPECT_EQ(sampling.record().uptimeText().view(), "");
  EXPECT_EQ(sampling.record().processorName().view(), "");
}

TEST_F(SamplingTest, OtherMachinesHaveWhatAHostFillsFreshInEachPass) {
  tree.write("proc/uptime", "100.5 1\n");
  auto machine = std::make_unique<TestMachine>();
  machine->setProcessor("Apple M1");
  Sampling sampling(*machine, false, options);
  sampling.pass();
  EXPECT_EQ(sampling.record().processorName().view(), "Apple M1");
  EXPECT_EQ(sampling.record().uptimeText().view(), "1 min");
  tree.write("proc/uptime", "200.5 1\n");
  sampling.pass();
  EXPECT_EQ(sampling.record().uptimeText().view(), "3 min");
}

TEST_F(SamplingTest, ExceptionEndsThatPassAlone) {
  ForgetfulComputer machine;
  Sampling sampling(machine, false, options);
  EXPECT_THAT(sampling.pass(), Optional(HasSubstr("index")));
  EXPECT_EQ(sampling.pass(), std::nullopt);
  EXPECT_EQ(sampling.record().sensors_temperature().view(), "Gas Gauge Battery\n");
}

}  // namespace
}  // namespace halvermonte::test
