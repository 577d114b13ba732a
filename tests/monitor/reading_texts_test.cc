#include "monitor/ReadingTexts.hpp"

#include <gmock/gmock.h>

namespace halvermonte {
namespace {

TEST(TemperatureText, ConvertsToWholeFahrenheit) {
  EXPECT_EQ(temperatureText(47, false, true), "47 °C");
  EXPECT_EQ(temperatureText(47, true, true), "117 °F") << "116.6";
  EXPECT_EQ(temperatureText(-40, true, true), "-40 °F");
  EXPECT_EQ(temperatureText(0, true, false), "32 F");
  EXPECT_EQ(temperatureText(2147483647, true, true), "3865470597 °F");
}

TEST(FanText, SaysThatAFanIsStopped) {
  EXPECT_EQ(fanText({.name = "Left", .number = 0}), "stopped");
  EXPECT_EQ(fanText({.name = "Left", .number = 1200}), "1200 rpm");
}

TEST(FanText, FanWithoutAReadingIsNotStopped) {
  EXPECT_EQ(fanText({.name = "Left", .number = 0, .isRead = false}), "-");
}

}  // namespace
}  // namespace halvermonte
