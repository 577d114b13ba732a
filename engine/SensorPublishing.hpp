// What a pass stores of its temperatures and fans.
#pragma once

#include "engine/TemperatureLists.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

/// Stores the six texts.
void storeTexts(SensorsRecord& record, const TemperatureLists& temperatures, const TextPair& fans);

/// Stores `sensors` and `fans`, parsed from the texts as they stand in the record. A dictionary
/// whose texts hold no entry, or differ in their counts of lines, keeps what it has. Returns false,
/// and stores nothing, if a temperature text is absent.
bool storeDictionaries(SensorsRecord& record);

}  // namespace halvermonte
