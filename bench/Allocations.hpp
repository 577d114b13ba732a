// Counts the heap allocations of this program by standing in for operator new.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>

namespace halvermonte {

/// Allocations so far.
uint64_t allocations();

/// Runs the work once an iteration, and reports how many allocations each run made.
template <class Work>
void measure(benchmark::State& state, Work work) {
  const uint64_t before = allocations();
  for (auto _ : state) work();
  state.counters["allocations"] = benchmark::Counter(static_cast<double>(allocations() - before),
                                                     benchmark::Counter::kAvgIterations);
}

}  // namespace halvermonte
