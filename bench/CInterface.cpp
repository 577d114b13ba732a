// A pass by the C interface, and the snapshot of its record that a host takes after it.
#include <benchmark/benchmark.h>

#include "bench/Allocations.hpp"
#include "halvermonte/halvermonte.h"

namespace halvermonte {
namespace {

void cPass(benchmark::State& state, bool withSnapshot) {
  halvermonte_engine* engine = nullptr;
  if (halvermonte_engine_create_bundled("M3 Max", &engine) != HALVERMONTE_OK) {
    state.SkipWithError(halvermonte_last_error());
    return;
  }
  measure(state, [&] {
    halvermonte_engine_next_tick(engine);
    halvermonte_engine_pass(engine);
    if (!withSnapshot) return;
    halvermonte_snapshot* snapshot = nullptr;
    halvermonte_engine_snapshot(engine, &snapshot);
    benchmark::DoNotOptimize(snapshot);
    halvermonte_snapshot_free(snapshot);
  });
  halvermonte_engine_free(engine);
}

BENCHMARK_CAPTURE(cPass, alone, false);
BENCHMARK_CAPTURE(cPass, andSnapshot, true);

}  // namespace
}  // namespace halvermonte
