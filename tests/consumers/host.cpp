// A host as small as one gets: an engine, a record, two passes, and what the engine raises. It runs
// on any computer, so it checks what holds on all of them.
#include <halvermonte/Exceptions.hpp>
#include <halvermonte/HalvermonteSensorsEngine.hpp>
#include <halvermonte/Readings.hpp>
#include <halvermonte/StatisticsData.hpp>
#include <iostream>
#include <memory>
#include <platform/Values.hpp>
#include <string>

namespace {

using halvermonte::HalvermonteSensorsEngine;
using halvermonte::StatisticsData;

bool samples(HalvermonteSensorsEngine& engine) {
  auto record = std::make_shared<StatisticsData>();
  for (int pass = 0; pass < kPasses; ++pass) {
    if (engine.getSensorsInfo(record) != record) return false;
  }
  for (const auto& [name, value] : record->sensors()) {
    std::cout << name << ": " << value.asText() << '\n';
  }
  for (const auto& [name, number, unit] : fans(*record)) {
    std::cout << name << ": " << number << ' ' << symbolOf(unit) << '\n';
  }
  std::cout << "read " << record->diskIO_readText() << '\n';
  return record->diskIO_activities().size() > 0 && record->diskIO_readText() &&
         record->sensors_temperature() && engine.physicalCores() >= 1;
}

/// The library and the host have to mean one type, or a handler is passed over.
bool catchesWhatTheLibraryRaises() {
  StatisticsData incomplete;
  incomplete.setModelName(halvermonte::Text());
  try {
    StatisticsData().populateStatisticsDataFrom(incomplete);
  } catch (const halvermonte::PlatformException& exception) {
    return exception.reason().find("modelName") != std::string::npos;
  }
  return false;
}

class RaisingRecord final : public halvermonte::SensorsRecord {
#define PROPERTY(name, Name, Type, initial, copy, turn)
#define ENGINE_PROPERTY(name, Name, Type, initial, copy, turn) \
  halvermonte::Type name() const override { return {}; }       \
  void set##Name(halvermonte::Type) override { throw halvermonte::RangeException(#Name); }
#include <halvermonte/properties.def>
};

bool catchesWhatItsRecordRaises(HalvermonteSensorsEngine& engine) {
  try {
    engine.getSensorsInfo(std::make_shared<RaisingRecord>());
  } catch (const halvermonte::PlatformException& exception) {
    return dynamic_cast<const halvermonte::RangeException*>(&exception) != nullptr;
  }
  return false;
}

int check(bool holds, const char* what) {
  if (!holds) std::cerr << "does not hold: " << what << '\n';
  return holds ? 0 : 1;
}

}  // namespace

int main() {
  HalvermonteSensorsEngine engine;
  return check(samples(engine), "a pass fills the record") +
         check(catchesWhatTheLibraryRaises(), "what the library raises is caught") +
         check(catchesWhatItsRecordRaises(engine), "what a setter raises is caught");
}
