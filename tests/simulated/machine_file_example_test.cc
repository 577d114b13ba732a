// The machine file at the start of the documentation.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {
namespace {

// The first indented block of the page.
std::string example() {
  std::ifstream page(DOCUMENTATION);
  std::string block;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("    ")) {
      block += line + "\n";
    } else if (!block.empty()) {
      break;
    }
  }
  return block;
}

TEST(DocumentedMachineFile, DoesWhatThePageSays) {
  const auto machine = SimulatedMachine::fromText(example(), "example.json");
  const ScopedMachine scope(*machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  engine.getSensorsInfo(record);
  EXPECT_EQ(record->sensors_fans(), "Left\nRight\n");
  EXPECT_EQ(record->sensors_temperatureMini(), "CPU Proximity\nBattery\nEnclosure\n");
  machine->nextTick();
  engine.getSensorsInfo(record);
  EXPECT_EQ(record->diskIO_speedReadText(), "2.5 MB/s");
  machine->nextTick();
  engine.getSensorsInfo(record);
  EXPECT_EQ(record->sensors_temperatureMini(), "CPU Proximity\n");
}

}  // namespace
}  // namespace halvermonte
