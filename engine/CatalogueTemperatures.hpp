// The temperatures of the catalogue's keys.
#pragma once

#include <cstdint>

#include "engine/Catalogue.hpp"
#include "engine/SensorsHistory.hpp"
#include "engine/TemperatureLists.hpp"

namespace halvermonte {

/// Adds the highest reading from 1 to 119 degrees under each display name, in the order shown to
/// people.
void addCatalogueTemperatures(const TemperatureWalk& walk, uint32_t conn, SensorsHistory& history,
                              TextPair& full);

}  // namespace halvermonte
