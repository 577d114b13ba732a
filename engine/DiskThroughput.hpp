// Disk traffic: totals, rates per second with their history, and the scale of their chart.
#pragma once

#include "engine/EngineState.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

/// All drives' bytes at one pass.
struct DiskTotals {
  Number read;
  Number written;
};

/// Seeds both histories with markers.
void seedDiskHistories(EngineState& engine);

/// Counts the drives' bytes and appends the rates since the pass before to the histories. A
/// platform exception from the counters is logged; the pass then goes on with the totals of before.
DiskTotals sampleDisks(EngineState& engine);

/// Stores the totals, the newest rates, the histories and the chart's scale, with their texts.
void publishDisks(const EngineState& engine, const DiskTotals& totals, SensorsRecord& record);

}  // namespace halvermonte
