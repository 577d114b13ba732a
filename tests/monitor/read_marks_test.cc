#include "monitor/ReadMarks.hpp"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "monitor/Sampling.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class ReadMarksOfAPass : public ::testing::Test {
 protected:
  // Its sampling is made with the first pass, so that a test can set the machine up.
  const PassView& pass() {
    if (!sampling) sampling.emplace(ChosenMachine{.machine = std::move(owned)});
    return sampling->pass();
  }

  const SensorView& temperature(const std::string& name) {
    for (const SensorView& sensor : sampling->view().temperatures) {
      if (sensor.name == name) return sensor;
    }
    ADD_FAILURE() << "no temperature is called " << name;
    static const SensorView kNone{.name = ""};
    return kNone;
  }

  std::unique_ptr<TestMachine> owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  std::optional<Sampling> sampling;
};

TEST_F(ReadMarksOfAPass, SensorIsReadAsLongAsItsKeyAnswers) {
  machine.keys["TC0P"] = flt(60);
  pass();
  EXPECT_TRUE(temperature("CPU 1 Proximity").isRead);
  EXPECT_EQ(temperature("CPU 1 Proximity").reading, std::nullopt);
}

TEST_F(ReadMarksOfAPass, SensorThatFallsBecauseItDoesNotAnswerIsNotRead) {
  machine.keys["TM0P"] = flt(60);
  pass();
  machine.keys.erase("TM0P");
  pass();
  EXPECT_EQ(temperature("Mem Bank A1").number, 59);
  EXPECT_FALSE(temperature("Mem Bank A1").isRead);
}

TEST_F(ReadMarksOfAPass, EveryKindOfFailureIsNoReading) {
  const KeyAnswer failures[] = {flt(60).withSize(0), flt(60).withInfoCode(kCodeError),
                                flt(60).withReadCode(kCodeError),
                                flt(60).withReadResult(kSMCKeyNotFound)};
  machine.keys["TM0P"] = flt(100);
  pass();
  for (const KeyAnswer& failure : failures) {
    machine.keys["TM0P"] = failure;
    pass();
    EXPECT_FALSE(temperature("Mem Bank A1").isRead);
  }
  machine.keys["TM0P"] = flt(100);
  pass();
  EXPECT_TRUE(temperature("Mem Bank A1").isRead);
}

TEST_F(ReadMarksOfAPass, ControllerThatDoesNotOpenReadsNothing) {
  machine.keys["TM0P"] = flt(60);
  pass();
  machine.openCode = kCodeError;
  pass();
  EXPECT_FALSE(temperature("Mem Bank A1").isRead);
}

TEST_F(ReadMarksOfAPass, SensorThatFellFarHasTheMachinesReadingToo) {
  machine.keys["TM0P"] = sp78(90);
  pass();
  machine.keys["TM0P"] = sp78(40.25);
  pass();
  EXPECT_EQ(temperature("Mem Bank A1").number, 89);
  EXPECT_EQ(temperature("Mem Bank A1").reading, 40);
  EXPECT_TRUE(temperature("Mem Bank A1").isRead);
}

TEST_F(ReadMarksOfAPass, OneKeyOfANameIsEnough) {
  machine.keys["TCSC"] = flt(60);
  machine.keys["TCSA"] = flt(50);
  pass();
  EXPECT_EQ(temperature("PECI SA").reading, std::nullopt) << "the highest is shown";
  machine.keys.erase("TCSA");
  pass();
  EXPECT_TRUE(temperature("PECI SA").isRead);
}

TEST_F(ReadMarksOfAPass, FixedSensorOfTheShortListWasRead) {
  machine.keys["TB0T"] = flt(30);  // "Battery" there, and TB3T is another "Battery"
  pass();
  EXPECT_TRUE(temperature("Battery").isRead);
}

TEST_F(ReadMarksOfAPass, SensorOfTheEventSystemWithoutAnEventIsNotRead) {
  machine.setTemperatureSensors({sensor("gas gauge battery", 60)});
  pass();
  EXPECT_TRUE(temperature("Gas Gauge Battery").isRead);
  machine.setTemperatureSensors({sensorWithoutEvent("gas gauge battery")});
  pass();
  EXPECT_EQ(temperature("Gas Gauge Battery").number, 59);
  EXPECT_FALSE(temperature("Gas Gauge Battery").isRead);
  machine.setTemperatureSensors({sensor("gas gauge battery", 31.5)});
  pass();
  EXPECT_TRUE(temperature("Gas Gauge Battery").isRead);
  EXPECT_EQ(temperature("Gas Gauge Battery").reading, 31);
}

TEST_F(ReadMarksOfAPass, AverageHasNoReadingOfItsOwn) {
  machine.setTemperatureSensors(
      {sensor("GPU MTR Temp Sensor1", 40), sensor("GPU MTR Temp Sensor4", 60)});
  pass();
  EXPECT_TRUE(temperature("GPU Cluster").isRead);
  EXPECT_EQ(temperature("GPU Cluster").reading, std::nullopt);
}

TEST_F(ReadMarksOfAPass, FanWithoutAnAnswerIsNotAStoppedOne) {
  machine.keys["FNum"] = ui8(3);
  machine.keys["F0Ac"] = flt(-1);  // is left out
  machine.keys["F1Ac"] = flt(0);
  const PassView& view = pass();
  ASSERT_THAT(view.fans, SizeIs(2));
  EXPECT_EQ(view.fans[0].number, 0);
  EXPECT_TRUE(view.fans[0].isRead);
  EXPECT_EQ(view.fans[1].number, 0);
  EXPECT_FALSE(view.fans[1].isRead);
}

TEST_F(ReadMarksOfAPass, MachineIsAskedNothingOnTheirAccount) {
  machine.keys["TC0P"] = flt(60);
  pass();
  PassWatch watch(machine);
  PassView view = sampling->view();
  machine.asked.clear();
  ReadMarks(sampling->engine()).mark(watch, view);
  EXPECT_THAT(machine.asked, IsEmpty());
  EXPECT_FALSE(view.temperatures.front().isRead) << "this watch has seen no answer";
}

}  // namespace
}  // namespace halvermonte::test
