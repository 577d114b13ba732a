#include "monitor/HostFields.hpp"

#include <cstdint>
#include <string>

#include "halvermonte/CountTexts.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

std::string durationText(uint64_t seconds) {
  const uint64_t minutes = seconds / 60, hours = minutes / 60, days = hours / 24;
  if (hours == 0) return std::to_string(minutes) + " min";
  if (days == 0) return std::to_string(hours) + " h " + std::to_string(minutes % 60) + " min";
  return std::to_string(days) + " d " + std::to_string(hours % 24) + " h";
}

/// A number of bytes, and the two properties that hold it.
struct MemoryField {
  uint64_t MemoryFacts::*bytes;
  void (StatisticsData::*setNumber)(Number);
  void (StatisticsData::*setText)(Text);
};
constexpr MemoryField kMemoryFields[] = {
    {&MemoryFacts::free, &StatisticsData::setSummary_memoryFree,
     &StatisticsData::setSummary_memoryFreeText},
    {&MemoryFacts::used, &StatisticsData::setSummary_memoryUsed,
     &StatisticsData::setSummary_memoryUsedText},
    {&MemoryFacts::inactive, &StatisticsData::setSummary_memoryInactive,
     &StatisticsData::setSummary_memoryInactiveText},
    {&MemoryFacts::wired, &StatisticsData::setSummary_memoryWired,
     &StatisticsData::setSummary_memoryWiredText},
    {&MemoryFacts::other, &StatisticsData::setSummary_memoryOther,
     &StatisticsData::setSummary_memoryOtherText},
    {&MemoryFacts::total, &StatisticsData::setSummary_memoryTotal,
     &StatisticsData::setSummary_memoryTotalText},
};

void storeMemory(StatisticsData& record, const MemoryFacts& memory) {
  for (const MemoryField& field : kMemoryFields) {
    const uint64_t bytes = memory.*field.bytes;
    (record.*field.setNumber)(Number::ofUInt64(bytes));
    (record.*field.setText)(Text(byteCountText(bytes)));
  }
}

}  // namespace

void storeHostFacts(StatisticsData& record, const HostFacts& facts) {
  if (facts.modelName) record.setModelName(Text(*facts.modelName));
  if (facts.modelIdentifier) record.setModelIdentifier(Text(*facts.modelIdentifier));
  if (facts.logicalCores) {
    record.setSummary_cpuLogicalCores(Number::ofInt32(*facts.logicalCores));
  }
  if (facts.uptime) {
    record.setUptime(Number::ofUInt64(*facts.uptime));
    record.setUptimeText(Text(durationText(*facts.uptime)));
  }
  if (facts.memory) storeMemory(record, *facts.memory);
}

}  // namespace halvermonte
