// An engine's construction and its passes. What the machine itself needs to answer a pass is
// measured alone as well: the engine's share is the difference.
#include <IOKit/IOKitLib.h>
#include <benchmark/benchmark.h>

#include "bench/Allocations.hpp"
#include "bench/Machines.hpp"
#include "engine/DiskPublishing.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/ThisComputer.hpp"

namespace halvermonte {
namespace {

void fullPass(benchmark::State& state, bool answersAlone) {
  const auto full = makeFullMachine();
  Ticking machine(*full);
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  measurePass(state, machine, answersAlone, [&] { engine.getSensorsInfo(record); });
}

/// The same over machines of more and more sensors.
void passOfSensors(benchmark::State& state) {
  const auto sensors = static_cast<size_t>(state.range(0));
  const auto full = makeMachine(sensors, sensors);
  Ticking machine(*full);
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  measurePass(state, machine, false, [&] { engine.getSensorsInfo(record); });
}

/// The disk phases of a pass, from the counters to the record.
void diskPass(benchmark::State& state, Machine& machine, bool answersAlone) {
  const ScopedMachine scope(machine);
  EngineState engine;
  seedDiskHistories(engine);
  IOServiceGetMatchingServices(0, IOServiceMatching("IOBlockStorageDriver"), &engine.drivelist);
  StatisticsData record;
  measurePass(state, machine, answersAlone,
              [&] { publishDisks(engine, sampleDisks(engine), record); });
  IOObjectRelease(engine.drivelist);
}

void diskPassSimulated(benchmark::State& state, bool answersAlone) {
  const auto full = makeFullMachine();
  Ticking machine(*full);
  diskPass(state, machine, answersAlone);
}

void diskPassHere(benchmark::State& state, bool answersAlone) {
  diskPass(state, *makeThisComputer(), answersAlone);
}

/// Without a hardware report: on a Mac its command takes seconds.
void construction(benchmark::State& state) {
  const auto machine = makeFullMachine();
  const ScopedMachine scope(*machine);
  measure(state, [] { benchmark::DoNotOptimize(HalvermonteSensorsEngine()); });
}

BENCHMARK(construction)->Iterations(1000);  // Each leaves its drive iterator behind, on purpose.
BENCHMARK_CAPTURE(diskPassSimulated, whole, false);
BENCHMARK_CAPTURE(diskPassSimulated, answersAlone, true);
BENCHMARK_CAPTURE(diskPassHere, whole, false);
BENCHMARK_CAPTURE(diskPassHere, answersAlone, true);
BENCHMARK_CAPTURE(fullPass, whole, false);
BENCHMARK_CAPTURE(fullPass, answersAlone, true);
BENCHMARK(passOfSensors)->DenseRange(0, 160, 40);

}  // namespace
}  // namespace halvermonte
