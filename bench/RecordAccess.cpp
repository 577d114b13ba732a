// The record's accessors and its snapshot.
#include <benchmark/benchmark.h>

#include "bench/Allocations.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {
namespace {

void recordGetText(benchmark::State& state) {
  const StatisticsData record;
  measure(state, [&] { benchmark::DoNotOptimize(record.hostName()); });
}

void recordSetText(benchmark::State& state) {
  StatisticsData record;
  const Text text("A text of some length");
  measure(state, [&] { record.setHostName(text); });
}

void recordGetFlag(benchmark::State& state) {
  const StatisticsData record;
  measure(state, [&] { benchmark::DoNotOptimize(record.battery_isCharging()); });
}

void recordSetFlag(benchmark::State& state) {
  StatisticsData record;
  measure(state, [&] { record.setBattery_isCharging(1); });
}

void recordPopulate(benchmark::State& state) {
  const StatisticsData source;
  StatisticsData record;
  measure(state, [&] { record.populateStatisticsDataFrom(source); });
}

BENCHMARK(recordGetText);
BENCHMARK(recordSetText);
BENCHMARK(recordGetFlag);
BENCHMARK(recordSetFlag);
BENCHMARK(recordPopulate);

}  // namespace
}  // namespace halvermonte
