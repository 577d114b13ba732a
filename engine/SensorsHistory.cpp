#include "engine/SensorsHistory.hpp"

namespace halvermonte {

int32_t SensorsHistory::clamped(std::string_view sensor, int32_t reading) {
  const auto found = reported_.find(sensor);
  if (found == reported_.end()) {
    reported_.emplace(sensor, reading);
    return reading;
  }
  const bool collapsed = int64_t{reading} - found->second <= -26;
  found->second = collapsed ? found->second - 1 : reading;
  return found->second;
}

}  // namespace halvermonte
