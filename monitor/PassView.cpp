#include "monitor/PassView.hpp"

#include <cstddef>

#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

// The record has the history of writes first.
enum HistoryPlace : size_t { kWrites = 0, kReads = 1 };

std::vector<float> historyOf(const Array& histories, HistoryPlace place) {
  const Array history = histories[place].asArray();
  std::vector<float> rates;
  for (const Value& rate : history) rates.push_back(rate.asNumber().float32Value());
  return rates;
}

DisksView disksOf(const StatisticsData& record) {
  const Array histories = record.diskIO_activities();
  return {.read = {.rate = record.diskIO_speedRead().float32Value(),
                   .rateText = record.diskIO_speedReadText().str(),
                   .total = record.diskIO_read().uint64Value(),
                   .totalText = record.diskIO_readText().str(),
                   .history = historyOf(histories, kReads)},
          .written = {.rate = record.diskIO_speedWrite().float32Value(),
                      .rateText = record.diskIO_speedWriteText().str(),
                      .total = record.diskIO_write().uint64Value(),
                      .totalText = record.diskIO_writeText().str(),
                      .history = historyOf(histories, kWrites)},
          .historyScale = record.diskIO_activitiesMax().float32Value(),
          .historyScaleText = record.diskIO_activitiesMaxText().str()};
}

}  // namespace

void readRecord(const std::shared_ptr<const StatisticsData>& record, PassView& view) {
  view.record = record;
  view.hostName = record->hostName().str();
  view.logicalCores = record->summary_cpuLogicalCores().int32Value();
  view.uptime = record->uptimeText().str();
  view.memoryUsed = record->summary_memoryUsedText().str();
  view.memoryTotal = record->summary_memoryTotalText().str();
  view.temperatures = temperatures(*record);
  view.shortTemperatures = shortTemperatures(*record);
  view.fans = fans(*record);
  view.disks = disksOf(*record);
}

}  // namespace halvermonte
