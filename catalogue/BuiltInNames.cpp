#include "catalogue/BuiltInNames.hpp"

#include <algorithm>
#include <cstddef>
#include <span>

namespace halvermonte {
namespace {

using Names = std::span<const NamedKey>;

// Given before those of the chip's cores.
constexpr Names kCommonNames[] = {kTemperatureNames, kVoltageNames, kCurrentNames, kPowerNames,
                                  kAppleSiliconNames};

/// The names of one chip's cores.
struct CoreNames {
  Names always;
  Names further;  ///< one per core from the eleventh on
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

Names furtherCoresOf(const CoreNames& names, int32_t physicalCores) {
  const auto beyondTen = static_cast<size_t>(std::max(physicalCores, 10) - 10);
  return names.further.first(std::min(beyondTen, names.further.size()));
}

void append(std::vector<NamedKey>& names, Names rows) {
  names.insert(names.end(), rows.begin(), rows.end());
}

}  // namespace

std::vector<NamedKey> builtInNames(std::string_view processorName, int32_t physicalCores) {
  std::vector<NamedKey> names;
  for (const Names rows : kCommonNames) append(names, rows);
  const CoreNames& cores = coreNamesFor(processorName);
  append(names, cores.always);
  append(names, furtherCoresOf(cores, physicalCores));
  if (!processorName.starts_with("Apple M1")) append(names, kGPUClusterNames);
  append(names, kPowerSupplyNames);
  return names;
}

// The keys of the other lists all have common names, and the other tables name temperature keys
// alone.
bool isBuiltInKey(std::string_view key) {
  return isBuiltInTemperatureKey(key) || std::ranges::any_of(kCommonNames, [&](Names rows) {
           return std::ranges::count(rows, key, &NamedKey::key) > 0;
         });
}

bool isBuiltInTemperatureKey(std::string_view key) {
  return std::ranges::count(kTemperatureKeys, key) > 0;
}

}  // namespace halvermonte
