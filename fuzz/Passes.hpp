// What the targets share: passes of an engine over a machine, and what holds after each of them.
#pragma once

#include <IOKit/IOKitLib.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "engine/EngineState.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "platform/portable/LiveCounters.hpp"

namespace halvermonte {

/// Ends the process, which is how a target reports a finding.
inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

/// Makes an engine and several passes over the current machine, `next` between them.
template <class Next>
void makePasses(Next next) {
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  const size_t objects = portable::liveObjects();
  const size_t handles = portable::liveHandles();
  for (int pass = 0; pass < 3; ++pass) {
    require(engine.getSensorsInfo(record) == record, "a pass returns its record");
    require(portable::liveObjects() == objects, "a pass releases its objects");
    require(portable::liveHandles() == handles, "a pass gives its handles back");
    next();
  }
  // An engine keeps its iterator for good, which a target that makes one for each input cannot.
  IOObjectRelease(engine.state().drivelist);
}

}  // namespace halvermonte
