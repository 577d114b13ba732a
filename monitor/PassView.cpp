#include "monitor/PassView.hpp"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

#include "halvermonte/Readings.hpp"
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

bool names(const std::vector<Reading>& list, const std::string& name) {
  return std::ranges::find(list, name, &Reading::name) != list.end();
}

/// Gives the second sensor of a name the identity "NAME (2)", and so on.
std::vector<SensorView> identified(std::vector<SensorView> sensors) {
  std::map<std::string, int> counts;
  for (SensorView& sensor : sensors) {
    const int count = ++counts[sensor.name];
    sensor.identity = sensor.name;
    if (count > 1) sensor.identity += " (" + std::to_string(count) + ")";
  }
  return sensors;
}

std::vector<SensorView> temperaturesOf(const StatisticsData& record) {
  const std::vector<Reading> fullList = temperatures(record);
  const std::vector<Reading> shortList = shortTemperatures(record);
  std::vector<SensorView> sensors;
  for (const Reading& reading : fullList) {
    const bool isInBoth = names(shortList, reading.name);
    sensors.push_back({.name = reading.name,
                       .number = reading.number,
                       .lists = isInBoth ? InLists::both : InLists::full});
  }
  for (const Reading& reading : shortList) {
    if (names(fullList, reading.name)) continue;
    sensors.push_back(
        {.name = reading.name, .number = reading.number, .lists = InLists::shortAlone});
  }
  return identified(std::move(sensors));
}

std::vector<SensorView> fansOf(const StatisticsData& record) {
  std::vector<SensorView> sensors;
  for (const Reading& fan : fans(record)) {
    sensors.push_back({.name = fan.name, .number = fan.number});
  }
  return identified(std::move(sensors));
}

}  // namespace

void readRecord(const std::shared_ptr<const StatisticsData>& record, PassView& view) {
  view.record = record;
  view.hostName = record->hostName().str();
  view.logicalCores = record->summary_cpuLogicalCores().int32Value();
  view.uptime = record->uptimeText().str();
  view.memoryUsed = record->summary_memoryUsedText().str();
  view.memoryTotal = record->summary_memoryTotalText().str();
  view.temperatures = temperaturesOf(*record);
  view.fans = fansOf(*record);
  view.disks = disksOf(*record);
}

}  // namespace halvermonte
