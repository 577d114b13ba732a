// The steadying of CPU temperatures, which the arm64 rules have.
#pragma once

#include "platform/Values.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

/// Holds CPU temperatures against the previous pass and against the coolest GPU, stores what
/// changes, and keeps what is published in `previous`.
void steadyProcessors(SensorsRecord& record, Dictionary& previous);

}  // namespace halvermonte
