#include "engine/Catalogue.hpp"

#include <algorithm>
#include <span>
#include <utility>

#include "catalogue/BuiltInNames.hpp"
#include "catalogue/Tables.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

std::vector<Value> textsOf(std::span<const std::string_view> keys) {
  std::vector<Value> texts;
  texts.reserve(keys.size());
  for (std::string_view key : keys) texts.push_back(Text(key));
  return texts;
}

}  // namespace

std::vector<SensorName> addedNames() {
  std::vector<SensorName> names = platformSensorNames();
  std::erase_if(names, [](const SensorName& added) { return isBuiltInKey(added.key); });
  return names;
}

Array temperatureKeys(const std::vector<SensorName>& added) {
  std::vector<Value> keys = textsOf(kTemperatureKeys);
  for (const SensorName& name : added) keys.push_back(Text(name.key));
  return Array(std::move(keys));
}

Array voltageKeys() { return Array(textsOf(kVoltageKeys)); }
Array currentKeys() { return Array(textsOf(kCurrentKeys)); }
Array powerKeys() { return Array(textsOf(kPowerKeys)); }

Dictionary humanReadableNames(std::string_view processorName, int32_t physicalCores,
                              const std::vector<SensorName>& added) {
  std::vector<Dictionary::Entry> names;
  for (const auto& [key, name] : builtInNames(processorName, physicalCores)) {
    names.push_back({Text(key), Text(name)});
  }
  for (const auto& [key, name] : added) names.push_back({Text(key), Text(name)});
  return Dictionary(std::move(names));
}

TemperatureWalk::TemperatureWalk(const Array& keys, const Dictionary& names) {
  const auto before = [](const Text& first, const Text& second) {
    return foundation::standsBefore(first.view(), second.view());
  };
  const auto nameOf = [&names](const Text& key) { return names.find(key.view()).asText(); };
  for (const Value& key : keys) {
    if (const Text name = nameOf(key.asText())) rankedNames_.push_back(name);
  }
  std::ranges::sort(rankedNames_, before);
  rankedNames_.erase(std::ranges::unique(rankedNames_).begin(), rankedNames_.end());

  for (const Value& key : keys) {
    const Text name = nameOf(key.asText());
    const auto place = std::ranges::lower_bound(rankedNames_, name, before);
    const int rank = name ? static_cast<int>(place - rankedNames_.begin()) : kUnnamed;
    steps_.push_back({key.asText(), rank});
  }
}

}  // namespace halvermonte
