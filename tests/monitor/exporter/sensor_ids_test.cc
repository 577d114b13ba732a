#include "monitor/exporter/SensorIds.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;

PassView viewOf(const std::vector<std::string>& temperatures,
                const std::vector<std::string>& fans = {}) {
  PassView view;
  for (const std::string& name : temperatures) view.temperatures.push_back({.name = name});
  for (const std::string& name : fans) view.fans.push_back({.name = name});
  return view;
}

TEST(SensorIds, AreTheWordsOfTheNames) {
  EXPECT_THAT(
      sensorIds(viewOf({"CPU Core 1", "SSD NAND I/O", " (odd)  name! ", "Zone é"})).temperatures,
      ElementsAre("cpu-core-1", "ssd-nand-i-o", "odd-name", "zone-é"));
}

TEST(SensorIds, FansHaveAWordMore) {
  EXPECT_THAT(sensorIds(viewOf({}, {"Left", "nct6798-2"})).fans,
              ElementsAre("fan-left", "fan-nct6798-2"));
}

TEST(SensorIds, NoTwoAreEqual) {
  const SensorIds ids =
      sensorIds(viewOf({"Die", "Die", "die", "Die 2", "Fan Left"}, {"Left", "Left"}));
  EXPECT_THAT(ids.temperatures, ElementsAre("die", "die-2", "die-3", "die-2-2", "fan-left"));
  EXPECT_THAT(ids.fans, ElementsAre("fan-left-2", "fan-left-3"));
}

TEST(SensorIds, NamesWithoutWordsHaveOneToo) {
  const SensorIds ids = sensorIds(viewOf({"", "?"}, {""}));
  EXPECT_THAT(ids.temperatures, ElementsAre("temperature", "temperature-2"));
  EXPECT_THAT(ids.fans, ElementsAre("fan"));
}

}  // namespace
}  // namespace halvermonte
