#include "monitor/report/ReadingTexts.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;
// Each row as "name degrees", the marked ones with a star.
std::vector<std::string> textsOf(const std::vector<Temperature>& rows) {
  std::vector<std::string> texts;
  for (const Temperature& row : rows) {
    texts.push_back((row.isMarked ? "*" : "") + row.name + " " + std::to_string(row.degrees));
  }
  return texts;
}

TEST(TemperatureRows, NamesOfTheShortListAreMarkedAndComeFirst) {
  const std::vector<Reading> fullList = {{"Bank", 30}, {"GPU", 50}, {"CPU", 60}};
  const std::vector<Reading> shortList = {
      {"CPU", 55}, {"Battery", 31}, {"GPU", 50}, {"Battery", 32}};
  EXPECT_THAT(textsOf(temperatureRows(fullList, shortList)),
              ElementsAre("*GPU 50", "*CPU 60", "*Battery 31", "*Battery 32", "Bank 30"))
      << "the value of the full list is shown";
}

TEST(TemperatureText, ConvertsToWholeFahrenheit) {
  EXPECT_EQ(temperatureText(47, false, true), "47 °C");
  EXPECT_EQ(temperatureText(47, true, true), "117 °F") << "116.6";
  EXPECT_EQ(temperatureText(-40, true, true), "-40 °F");
  EXPECT_EQ(temperatureText(0, true, false), "32 F");
  EXPECT_EQ(temperatureText(2147483647, true, true), "3865470597 °F");
}

TEST(FanText, SaysThatAFanIsStopped) {
  EXPECT_EQ(fanText(0), "stopped");
  EXPECT_EQ(fanText(1200), "1200 rpm");
}

}  // namespace
}  // namespace halvermonte
