// The steadying of CPU temperatures, which the arm64 rules have.
#pragma once

#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {

/// Holds CPU temperatures against the previous pass and against the coolest GPU, stores what
/// changes, and keeps what is published in `previous`.
void steadyProcessors(SensorsRecord& record, Dictionary& previous);

}  // namespace halvermonte
