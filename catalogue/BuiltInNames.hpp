// The built-in names of SMC keys on each chip, and which keys are built in.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "catalogue/Tables.hpp"

namespace halvermonte {

/// The names of keys in the order in which they are given: a later name of a key replaces an
/// earlier one. Those of CPU cores and GPU clusters depend on the chip: by the prefix of the
/// processor's name, and by the number of physical cores.
std::vector<NamedKey> builtInNames(std::string_view processorName, int32_t physicalCores);

/// True if the key stands in one of the four key lists or has a name on any processor.
bool isBuiltInKey(std::string_view key);

/// True if the key stands in the list that every pass reads.
bool isBuiltInTemperatureKey(std::string_view key);

}  // namespace halvermonte
