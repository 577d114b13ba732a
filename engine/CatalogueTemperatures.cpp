#include "engine/CatalogueTemperatures.hpp"
#include "halvermonte/Values.hpp"

#include <cstddef>
#include <vector>

#include "halvermonte/SMC.h"
#include "platform/Conversions.hpp"

namespace halvermonte {

void addCatalogueTemperatures(const TemperatureWalk& walk, uint32_t conn, SensorsHistory& history,
                              TextPair& full) {
  const std::vector<Text>& names = walk.rankedNames();
  std::vector<int32_t> highest(names.size(), 0);  // 0 is below every accepted reading
  for (const TemperatureWalk::Step& step : walk.steps()) {
    const double reading = SMCGetTemperature(step.key.view().data(), conn);
    if (step.rank == TemperatureWalk::kUnnamed) continue;
    const int32_t degrees = history.clamped(step.key.view(), truncated<int32_t>(reading));
    int32_t& best = highest[static_cast<size_t>(step.rank)];
    if (degrees >= 1 && degrees <= 119 && degrees > best) best = degrees;
  }
  for (size_t rank = 0; rank < names.size(); ++rank) {
    if (highest[rank] > 0) full.append(names[rank].view(), highest[rank]);
  }
}

}  // namespace halvermonte
