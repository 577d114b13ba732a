// What an engine carries from pass to pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/SensorsHistory.hpp"
#include "halvermonte/DiskCounters.h"
#include "halvermonte/Values.hpp"

namespace halvermonte {

/// The instance variables, in the order of the engine's layout; they are released in reverse. Those
/// marked unused are part of the layout.
struct EngineState {
  Date lastShownDate;             // unused
  Text cachePath;                 // unused
  Text wcachePath;                // unused
  bool mainAppNeedsData = false;  // unused
  Array smcTempKeys;
  Array smcVoltageKeys;  // built, not sampled
  Array smcCurrentKeys;  // built, not sampled
  Array smcPowerKeys;    // built, not sampled
  Dictionary smcKeyHumanReadableNames;
  uint64_t prevReadVal = 0;           // unused
  uint64_t prevWriteVal = 0;          // unused
  uint64_t readRate = 0;              // unused
  uint64_t writeRate = 0;             // unused
  std::vector<Value> writeDiskPoint;  ///< the last rates, oldest first; -1 marks an empty slot
  std::vector<Value> readDiskPoint;
  Text workflowFile;           // unused after construction
  uint32_t drivelist = 0;      ///< iterator over the drives; 0 if there is none
  uint32_t masterPort = 0;     ///< IOKit's main port
  Dictionary prevTempos;       ///< the last published sensors, for the steadying
  bool prevPopulated = false;  // unused
  uint32_t conn = 0;           ///< the pass's SMC connection; 0 outside a pass
  SensorsHistory sensorsHistory;
  Date lastDataFetch;  ///< when the last pass read the drives; absent before the first
  io_stats i_dsk{};    ///< reads
  io_stats o_dsk{};    ///< writes
};

/// How many rates each history holds at all times.
inline constexpr size_t kDiskPoints = 75;

}  // namespace halvermonte
