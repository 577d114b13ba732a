// Disk traffic as a pass counts it: totals, and rates per second with their history.
#pragma once

#include "engine/EngineState.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {

/// All drives' bytes at one pass.
struct DiskTotals {
  Number read;
  Number written;
};

/// Fills both histories with markers.
void seedDiskHistories(EngineState& engine);

/// Counts the drives' bytes and appends the rates since the previous pass to the histories. If the
/// counters raise a platform exception, it is logged and the previous totals stay.
DiskTotals sampleDisks(EngineState& engine);

}  // namespace halvermonte
