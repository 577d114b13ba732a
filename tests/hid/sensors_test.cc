#include "halvermonte/HIDSensors.h"

#include <gtest/gtest.h>

#include <csignal>

#include "engine/CFConversions.hpp"
#include "platform/CFOwned.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/PlatformCalls.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// Every test leaves as many objects as it found, once its own members are gone.
class LeavesNoObject : public testing::Test {
 protected:
  ~LeavesNoObject() override { EXPECT_EQ(portable::liveObjects(), objects_); }

 private:
  size_t objects_ = portable::liveObjects();
};

class HIDSensorsTest : public LeavesNoObject {
 protected:
  /// The entries of a list that a function made, as texts; "(null)" for no list.
  static std::vector<std::string> names(CFDictionaryRef sensors) {
    const CFOwned list(getProductNames(sensors));
    if (!list) return {"(null)"};
    const Array texts = textsOf(list.get());
    std::vector<std::string> names;
    for (const Value& name : texts) names.emplace_back(name.asText().str());
    return names;
  }
  static std::vector<double> readings(CFMutableArrayRef (*read)(CFDictionaryRef),
                                      CFDictionaryRef sensors) {
    const CFOwned list(read(sensors));
    const Array numbers = numbersOf(list.get());
    std::vector<double> readings;
    for (const Value& number : numbers) {
      EXPECT_EQ(number.asNumber().form(), Number::Form::float64);
      readings.push_back(number.asNumber().float64Value());
    }
    return readings;
  }

  using Names = std::vector<std::string>;
  using Readings = std::vector<double>;

  TestMachine machine;
  ScopedMachine scope{machine};
  CFOwned<CFDictionaryRef> temperatures{matching(kSensorsPage, kTemperatureUsage)};
  CFOwned<CFDictionaryRef> currents{matching(kPowerSensorsPage, kCurrentUsage)};
  CFOwned<CFDictionaryRef> voltages{matching(kPowerSensorsPage, kVoltageUsage)};
};

int32_t entry(CFDictionaryRef dictionary, CFStringRef key) {
  int32_t value = 0;
  const auto* const number = static_cast<CFNumberRef>(CFDictionaryGetValue(dictionary, key));
  EXPECT_TRUE(CFNumberGetValue(number, kCFNumberSInt32Type, &value));
  return value;
}

TEST_F(HIDSensorsTest, AreMatchedByPageAndUsage) {
  EXPECT_EQ(CFDictionaryGetCount(currents.get()), 2);
  EXPECT_EQ(entry(currents.get(), CFSTR("PrimaryUsagePage")), 65288);
  EXPECT_EQ(entry(currents.get(), CFSTR("PrimaryUsage")), 2);
  EXPECT_EQ(entry(temperatures.get(), CFSTR("PrimaryUsagePage")), 65280);
  EXPECT_EQ(entry(temperatures.get(), CFSTR("PrimaryUsage")), 5);
}

TEST_F(HIDSensorsTest, AreListedInServiceOrderWithTheirReadings) {
  machine.setTemperatureSensors({sensor("b", 40.5), sensor("a", -3), sensor("b", 1e300)});
  EXPECT_EQ(names(temperatures.get()), (Names{"b", "a", "b"}));
  EXPECT_EQ(readings(getThermalValues, temperatures.get()), (Readings{40.5, -3, 1e300}));
}

TEST_F(HIDSensorsTest, AreUnknownWithoutAProduct) {
  machine.setTemperatureSensors({sensor("a", 1), sensorWithoutProduct(2), sensor("", 3)});
  EXPECT_EQ(names(temperatures.get()), (Names{"a", "Unknown", ""}));
  EXPECT_EQ(readings(getThermalValues, temperatures.get()), (Readings{1, 2, 3}));
}

TEST_F(HIDSensorsTest, ReadZeroWithoutAnEventAndStayAligned) {
  machine.setTemperatureSensors({sensor("a", 1), sensorWithoutEvent("b"), sensor("c", 3)});
  EXPECT_EQ(names(temperatures.get()), (Names{"a", "b", "c"}));
  EXPECT_EQ(readings(getThermalValues, temperatures.get()), (Readings{1, 0, 3}));
}

TEST_F(HIDSensorsTest, ReadPowerFromPowerEventsAlone) {
  machine.sensors[HIDSensorKind::current] = services({sensor("ibat", 0.75)});
  machine.sensors[HIDSensorKind::voltage] = services({sensor("vbat", 12.5)});
  machine.setTemperatureSensors({sensor("tdie", 40)});
  EXPECT_EQ(readings(getPowerValues, currents.get()), (Readings{0.75}));
  EXPECT_EQ(readings(getPowerValues, voltages.get()), (Readings{12.5}));
  EXPECT_EQ(readings(getThermalValues, currents.get()), (Readings{0})) << "no temperature event";
  EXPECT_EQ(readings(getPowerValues, temperatures.get()), (Readings{0})) << "no power event";
}

TEST_F(HIDSensorsTest, AreEmptyListsIfNoServiceMatches) {
  const CFOwned keyboards(matching(1, 6));
  for (CFDictionaryRef sensors : {temperatures.get(), keyboards.get()}) {
    EXPECT_EQ(names(sensors), Names{});
    EXPECT_EQ(readings(getThermalValues, sensors), Readings{});
    EXPECT_EQ(readings(getPowerValues, sensors), Readings{});
  }
}

TEST_F(HIDSensorsTest, HaveNoNamesAndNoTemperaturesIfThereIsNoServiceList) {
  machine.sensors[HIDSensorKind::temperature] = nullptr;
  EXPECT_EQ(names(temperatures.get()), Names{"(null)"});
  EXPECT_EQ(readings(getThermalValues, temperatures.get()), Readings{});
}

TEST_F(HIDSensorsTest, HaveNoNamesAndNoTemperaturesWithoutAClient) {
  machine.setTemperatureSensors({sensor("a", 1)});
  PlatformCalls calls;
  calls.givesClients = false;
  EXPECT_EQ(names(temperatures.get()), Names{"(null)"});
  EXPECT_EQ(readings(getThermalValues, temperatures.get()), Readings{});
}

using HIDSensorsDeathTest = HIDSensorsTest;

TEST_F(HIDSensorsDeathTest, EndTheProcessIfThereIsNoListOfPowerSensors) {
  machine.sensors[HIDSensorKind::current] = nullptr;
  EXPECT_EXIT(getPowerValues(currents.get()), testing::KilledBySignal(SIGABRT), "^$");
}

TEST_F(HIDSensorsDeathTest, EndTheProcessWithoutAClientForPowerSensors) {
  PlatformCalls calls;
  calls.givesClients = false;
  EXPECT_EXIT(getPowerValues(currents.get()), testing::KilledBySignal(SIGABRT), "^$");
}

TEST_F(HIDSensorsTest, AreEnumeratedAfreshByEachCall) {
  machine.setTemperatureSensors({sensor("a", 1)});
  EXPECT_EQ(names(temperatures.get()), Names{"a"});
  machine.setTemperatureSensors({sensor("a", 1), sensor("b", 2)});
  EXPECT_EQ(names(temperatures.get()), (Names{"a", "b"}));
}

}  // namespace
}  // namespace halvermonte::test
