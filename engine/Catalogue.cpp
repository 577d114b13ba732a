#include "engine/Catalogue.hpp"
#include <cstddef>
#include <utility>

#include <algorithm>
#include <span>

#include "engine/CatalogueTables.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

Array arrayOf(std::span<const std::string_view> keys) {
  std::vector<Value> texts;
  texts.reserve(keys.size());
  for (std::string_view key : keys) texts.push_back(Text(key));
  return Array(std::move(texts));
}

/// The names of one chip's cores.
struct CoreNames {
  std::span<const NamedKey> always;
  std::span<const NamedKey> further;  ///< one per core from the eleventh on
};

/// The first row whose prefix fits is used. A chip's variants (Pro, Max, Ultra) fit its own prefix.
struct ChipRule {
  std::string_view prefix;
  CoreNames names;
};

constexpr CoreNames kM2 = {kM2Names, kM2FurtherCores};
constexpr CoreNames kM3 = {kM3Names, kM3FurtherCores};
constexpr CoreNames kM4Large = {kM4LargeNames, kM4LargeFurtherCores};
constexpr CoreNames kM1 = {kM1Names, {}};
constexpr CoreNames kDefault = {kDefaultNames, kDefaultFurtherCores};

constexpr ChipRule kChipRules[] = {
    {"Apple M2", kM2},
    {"Apple M3", kM3},
    {"Apple M4 Pro", kM4Large},
    {"Apple M4 Max", kM4Large},
    {"Apple M4 Ultra", kM4Large},
    {"Apple M4", kDefault},
    {"Apple M1", kM1},
    {"", kDefault},
};

const CoreNames& coreNamesFor(std::string_view processorName) {
  return std::ranges::find_if(
             kChipRules,
             [&](const ChipRule& rule) { return processorName.starts_with(rule.prefix); })
      ->names;
}

std::span<const NamedKey> furtherCoresOf(const CoreNames& names, int32_t physicalCores) {
  const auto beyondTen = static_cast<size_t>(std::max(physicalCores, 10) - 10);
  return names.further.first(std::min(beyondTen, names.further.size()));
}

void assign(std::vector<Dictionary::Entry>& names, std::span<const NamedKey> rows) {
  for (const NamedKey& row : rows) names.push_back({Text(row.key), Text(row.name)});
}

}  // namespace

Array temperatureKeys() { return arrayOf(kTemperatureKeys); }
Array voltageKeys() { return arrayOf(kVoltageKeys); }
Array currentKeys() { return arrayOf(kCurrentKeys); }
Array powerKeys() { return arrayOf(kPowerKeys); }

Dictionary humanReadableNames(std::string_view processorName, int32_t physicalCores) {
  std::vector<Dictionary::Entry> names;
  assign(names, kTemperatureNames);
  assign(names, kVoltageNames);
  assign(names, kCurrentNames);
  assign(names, kPowerNames);
  assign(names, kAppleSiliconNames);
  const CoreNames& cores = coreNamesFor(processorName);
  assign(names, cores.always);
  assign(names, furtherCoresOf(cores, physicalCores));
  if (!processorName.starts_with("Apple M1")) assign(names, kGPUClusterNames);
  assign(names, kPowerSupplyNames);
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
