#include "halvermonte/Readings.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Each as "name number unit".
std::vector<std::string> textsOf(const std::vector<Reading>& readings) {
  std::vector<std::string> texts;
  for (const auto& [name, number, unit] : readings) {
    texts.push_back(name + " " + std::to_string(number) + " " + std::string(symbolOf(unit)));
  }
  return texts;
}

class Readings : public ::testing::Test {
 protected:
  void setTemperatures(std::string_view names, std::string_view values) {
    record.setSensors_temperature(Text(names));
    record.setSensors_temperatureData(Text(values));
  }

  StatisticsData record;
};

TEST_F(Readings, TemperaturesAreInTheOrderOfTheFullList) {
  setTemperatures("GPU\nCPU\n", "50\n-60\n");
  EXPECT_THAT(textsOf(temperatures(record)), ElementsAre("GPU 50 °C", "CPU -60 °C"));
}

TEST_F(Readings, TheShortListIsApart) {
  setTemperatures("GPU\n", "50\n");
  record.setSensors_temperatureMini(Text("CPU\n"));
  record.setSensors_temperatureMiniData(Text("55\n"));
  EXPECT_THAT(textsOf(shortTemperatures(record)), ElementsAre("CPU 55 °C"));
}

TEST_F(Readings, FansAreInRevolutionsAMinute) {
  record.setSensors_fans(Text("Left\n\n"));
  record.setSensors_fansData(Text("1200\n0\n"));
  EXPECT_THAT(textsOf(fans(record)), ElementsAre("Left 1200 rpm", " 0 rpm"))
      << "a name may be empty";
}

TEST_F(Readings, EqualNamesAreAllKept) {
  setTemperatures("Core\nCore\n", "40\n41\n");
  EXPECT_THAT(textsOf(temperatures(record)), ElementsAre("Core 40 °C", "Core 41 °C"));
}

TEST_F(Readings, LinesWithoutAPartnerAreLeftOut) {
  setTemperatures("A\nB\nC\n", "1\n2\n");
  EXPECT_THAT(textsOf(temperatures(record)), ElementsAre("A 1 °C", "B 2 °C"));
}

TEST_F(Readings, ValuesThatAreNotNumbersAreLeftOut) {
  setTemperatures("A\nB\nC\nD\n", "\n4x\n99999999999\n5\n");
  EXPECT_THAT(textsOf(temperatures(record)), ElementsAre("D 5 °C"));
}

TEST_F(Readings, AbsentTextsAndNotApplicableHaveNone) {
  record.setSensors_temperature(Text());
  record.setSensors_temperatureMini(Text());
  record.setSensors_fans(Text("n/a"));
  EXPECT_THAT(temperatures(record), IsEmpty());
  EXPECT_THAT(shortTemperatures(record), IsEmpty());
  EXPECT_THAT(fans(record), IsEmpty());
}

}  // namespace
}  // namespace halvermonte
