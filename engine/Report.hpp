// What a pass stores of its temperatures and fans into the record.
#pragma once

#include "engine/TemperatureLists.hpp"
#include "platform/Values.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

/// Stores the six texts.
void storeTexts(SensorsRecord& record, const TemperatureLists& temperatures, const TextPair& fans);

/// Stores `sensors` and `fans`, parsed from the texts as they stand in the record. A dictionary
/// whose texts hold no entry, or do not match, keeps what it has. False where a temperature text is
/// absent: nothing is stored then.
bool storeDictionaries(SensorsRecord& record);

/// Holds CPU temperatures against the pass before (`previous`) and against the coolest GPU, stores
/// what changes, and remembers what is published.
void steadyProcessors(SensorsRecord& record, Dictionary& previous);

}  // namespace halvermonte
