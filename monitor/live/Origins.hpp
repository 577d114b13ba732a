// Where the readings of a machine come from.
#pragma once

#include <map>
#include <string>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "monitor/PassView.hpp"
#include "monitor/SensorGroups.hpp"
#include "monitor/live/History.hpp"

namespace halvermonte {

struct Origin {
  std::string driver;  ///< the kernel's; "" if there is none
  std::string text;    ///< key, driver and file, or the service of the event system
};

using Origins = std::map<Track, Origin>;

/// Finds the origins of the sensors that the pass shows. Lists the machine's sensors for that,
/// which may read them.
Origins findOrigins(const HalvermonteSensorsEngine& engine, Machine& machine, const PassView& view);

}  // namespace halvermonte
