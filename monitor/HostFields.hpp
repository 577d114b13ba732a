// The record's properties that a host fills from what a machine says about itself.
#pragma once

#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

/// Stores the facts, with their texts. The property of an absent fact keeps its value.
void storeHostFacts(StatisticsData& record, const HostFacts& facts);

}  // namespace halvermonte
