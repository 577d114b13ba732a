#include "engine/SensorPublishing.hpp"

#include <cstddef>
#include <utility>
#include <vector>

#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

enum class EmptyNames { skipped, kept };

/// The lines of two texts as names and values; absent if there are none, or the counts differ. If
/// two lines have one name, the later value is kept.
Dictionary parsed(const Text& names, const Text& values, EmptyNames emptyNames) {
  if (!names || !values) return {};
  const std::vector<Text> nameLines = names.split('\n');
  const std::vector<Text> valueLines = values.split('\n');
  if (nameLines.size() != valueLines.size() || nameLines.size() < 2) return {};
  const size_t entriesEnd = nameLines.size() - 1;  // nothing follows the last line feed
  std::vector<Dictionary::Entry> entries;
  entries.reserve(entriesEnd);
  for (size_t i = 0; i < entriesEnd; ++i) {
    if (nameLines[i].view().empty() && emptyNames == EmptyNames::skipped) continue;
    entries.push_back({nameLines[i], valueLines[i]});
  }
  return Dictionary(std::move(entries));
}

}  // namespace

void storeTexts(SensorsRecord& record, const TemperatureLists& temperatures, const TextPair& fans) {
  record.setSensors_temperature(Text(temperatures.full.names));
  record.setSensors_temperatureData(Text(temperatures.full.values));
  record.setSensors_fans(Text(fans.names));
  record.setSensors_fansData(Text(fans.values));
  record.setSensors_temperatureMini(Text(temperatures.mini.names));
  record.setSensors_temperatureMiniData(Text(temperatures.mini.values));
}

bool storeDictionaries(SensorsRecord& record) {
  const Text names = record.sensors_temperature();
  const Text values = record.sensors_temperatureData();
  if (!names || !values) return false;
  if (const Dictionary sensors = parsed(names, values, EmptyNames::skipped)) {
    record.setSensors(sensors);
  }
  // Unlike a temperature, a fan without a name is an entry, under the empty name.
  if (const Dictionary fans =
          parsed(record.sensors_fans(), record.sensors_fansData(), EmptyNames::kept)) {
    record.setFans(fans);
  }
  return true;
}

}  // namespace halvermonte
