// Disk traffic as the record shows it.
#pragma once

#include "engine/DiskSampling.hpp"
#include "engine/EngineState.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

/// Stores the totals, the newest rates, the histories and the chart's scale, with their texts.
void publishDisks(const EngineState& engine, const DiskTotals& totals, SensorsRecord& record);

}  // namespace halvermonte
