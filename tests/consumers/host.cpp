// A host as small as one gets: an engine, a record, two passes. It runs on any computer, so it
// checks what holds on all of them.
#include <halvermonte/Exceptions.hpp>
#include <halvermonte/HalvermonteSensorsEngine.hpp>
#include <halvermonte/StatisticsData.hpp>
#include <iostream>
#include <memory>
#include <platform/Values.hpp>

namespace {

int sample() {
  halvermonte::HalvermonteSensorsEngine engine;
  auto record = std::make_shared<halvermonte::StatisticsData>();
  for (int pass = 0; pass < kPasses; ++pass) {
    if (engine.getSensorsInfo(record) != record) return 1;
  }
  for (const auto& [name, value] : record->sensors().entries()) {
    std::cout << name.view() << ": " << value.asText().view() << '\n';
  }
  std::cout << "read " << record->diskIO_readText().view() << '\n';
  const bool sampled = record->diskIO_activities().size() > 0 && record->diskIO_readText() &&
                       record->sensors_temperature() && engine.physicalCores() >= 1;
  return sampled ? 0 : 1;
}

}  // namespace

int main() {
  try {
    return sample();
  } catch (const halvermonte::PlatformException& exception) {
    std::cerr << exception.reason() << '\n';
    return 1;
  }
}
