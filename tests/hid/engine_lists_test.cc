#include <gtest/gtest.h>

#include "platform/portable/LiveCounters.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

std::vector<std::string> texts(const Array& list) {
  std::vector<std::string> texts;
  for (const Value& text : list) texts.emplace_back(text.asText().str());
  return texts;
}

std::vector<double> numbers(const Array& list) {
  std::vector<double> numbers;
  for (const Value& number : list) numbers.push_back(number.asNumber().float64Value());
  return numbers;
}

class EngineLists : public testing::Test {
 protected:
  TestMachine machine;
  Sampler sampler{machine};
  HalvermonteSensorsEngine& engine = sampler.engine();
};

TEST_F(EngineLists, GiveNamesAndReadingsOfEachKindAlignedByIndex) {
  machine.setTemperatureSensors({sensor("t0", 40.5), sensorWithoutProduct(41)});
  machine.sensors[HIDSensorKind::current] = services({sensor("i0", 0.5)});
  machine.sensors[HIDSensorKind::voltage] = services({sensor("v0", 12), sensorWithoutEvent("v1")});
  const size_t objects = portable::liveObjects();
  EXPECT_EQ(texts(engine.thermalArray()), (std::vector<std::string>{"t0", "Unknown"}));
  EXPECT_EQ(numbers(engine.returnThermalValues()), (std::vector<double>{40.5, 41}));
  EXPECT_EQ(texts(engine.currentArray()), (std::vector<std::string>{"i0"}));
  EXPECT_EQ(numbers(engine.returnCurrentValues()), (std::vector<double>{0.5}));
  EXPECT_EQ(texts(engine.voltageArray()), (std::vector<std::string>{"v0", "v1"}));
  EXPECT_EQ(numbers(engine.returnVoltageValues()), (std::vector<double>{12, 0}));
  EXPECT_EQ(portable::liveObjects(), objects);
}

TEST_F(EngineLists, HaveNoNamesIfThereIsNoServiceList) {
  for (const auto kind :
       {HIDSensorKind::temperature, HIDSensorKind::current, HIDSensorKind::voltage}) {
    machine.sensors[kind] = nullptr;
  }
  EXPECT_FALSE(engine.thermalArray());
  EXPECT_FALSE(engine.currentArray());
  EXPECT_FALSE(engine.voltageArray());
  EXPECT_TRUE(engine.returnThermalValues()) << "an empty list";
  EXPECT_EQ(engine.returnThermalValues().size(), 0U);
}

TEST_F(EngineLists, KeepTheCharactersOfAName) {
  machine.setTemperatureSensors({sensor(std::string("caf\xC3\xA9\0x", 7), 1)});
  EXPECT_EQ(texts(engine.thermalArray()).front(), std::string("caf\xC3\xA9\0x", 7));
}

}  // namespace
}  // namespace halvermonte::test
