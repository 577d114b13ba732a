#include "engine/Catalogue.hpp"

#include <algorithm>
#include <span>
#include <utility>

#include "catalogue/BuiltInNames.hpp"
#include "catalogue/Tables.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

Array arrayOf(std::span<const std::string_view> keys) {
  std::vector<Value> texts;
  texts.reserve(keys.size());
  for (std::string_view key : keys) texts.push_back(Text(key));
  return Array(std::move(texts));
}

}  // namespace

Array temperatureKeys() { return arrayOf(kTemperatureKeys); }
Array voltageKeys() { return arrayOf(kVoltageKeys); }
Array currentKeys() { return arrayOf(kCurrentKeys); }
Array powerKeys() { return arrayOf(kPowerKeys); }

Dictionary humanReadableNames(std::string_view processorName, int32_t physicalCores) {
  std::vector<Dictionary::Entry> names;
  for (const auto& [key, name] : builtInNames(processorName, physicalCores)) {
    names.push_back({Text(key), Text(name)});
  }
  return Dictionary(std::move(names));
}

TemperatureWalk::TemperatureWalk(const Array& keys, const Dictionary& names) {
  const auto before = [](const Text& first, const Text& second) {
    return foundation::standsBefore(first.view(), second.view());
  };
  const auto same = [](const Text& first, const Text& second) {
    return first.view() == second.view();
  };
  for (const Value& key : keys.elements()) {
    if (const Text name = names.find(key.asText().view()).asText()) rankedNames_.push_back(name);
  }
  std::ranges::sort(rankedNames_, before);
  rankedNames_.erase(std::ranges::unique(rankedNames_, same).begin(), rankedNames_.end());

  for (const Value& key : keys.elements()) {
    const Text name = names.find(key.asText().view()).asText();
    const auto place = std::ranges::lower_bound(rankedNames_, name, before);
    const int rank = name ? static_cast<int>(place - rankedNames_.begin()) : kUnnamed;
    steps_.push_back({key.asText(), rank});
  }
}

}  // namespace halvermonte
