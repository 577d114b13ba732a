#include "monitor/PassView.hpp"

#include <cstddef>

#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

std::string stringOf(const Text& text) { return std::string(text.view()); }

// The record has the history of writes first.
enum HistoryPlace : size_t { kWrites = 0, kReads = 1 };

std::vector<float> historyOf(const Array& histories, HistoryPlace place) {
  if (place >= histories.size()) return {};
  const Array history = histories.elements()[place].asArray();
  std::vector<float> rates;
  for (const Value& rate : history.elements()) rates.push_back(rate.asNumber().float32Value());
  return rates;
}

DisksView disksOf(const StatisticsData& record) {
  const Array histories = record.diskIO_activities();
  return {.read = {.rate = record.diskIO_speedRead().float32Value(),
                   .rateText = stringOf(record.diskIO_speedReadText()),
                   .total = record.diskIO_read().uint64Value(),
                   .totalText = stringOf(record.diskIO_readText()),
                   .history = historyOf(histories, kReads)},
          .written = {.rate = record.diskIO_speedWrite().float32Value(),
                      .rateText = stringOf(record.diskIO_speedWriteText()),
                      .total = record.diskIO_write().uint64Value(),
                      .totalText = stringOf(record.diskIO_writeText()),
                      .history = historyOf(histories, kWrites)},
          .historyScale = record.diskIO_activitiesMax().float32Value(),
          .historyScaleText = stringOf(record.diskIO_activitiesMaxText())};
}

}  // namespace

void readRecord(const std::shared_ptr<const StatisticsData>& record, PassView& view) {
  view.record = record;
  view.hostName = stringOf(record->hostName());
  view.logicalCores = record->summary_cpuLogicalCores().int32Value();
  view.uptime = stringOf(record->uptimeText());
  view.memoryUsed = stringOf(record->summary_memoryUsedText());
  view.memoryTotal = stringOf(record->summary_memoryTotalText());
  view.readings = readingsOf(*record);
  view.disks = disksOf(*record);
}

}  // namespace halvermonte
