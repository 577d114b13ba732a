#include "capi/Engine.hpp"

#include <IOKit/IOKitLib.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "capi/Errors.hpp"
#include "engine/EngineState.hpp"
#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/ThisComputer.hpp"
#include "halvermonte/halvermonte.h"
#include "platform/portable/KeptLines.hpp"

using halvermonte::BundledMachine;
using halvermonte::bundledMachines;
using halvermonte::findBundledMachine;
using halvermonte::HalvermonteSensorsEngine;
using halvermonte::KeptLines;
using halvermonte::Machine;
using halvermonte::makeThisComputer;
using halvermonte::ScopedMachine;
using halvermonte::SimulatedMachine;
using halvermonte::Text;
using halvermonte::capi::Failure;
using halvermonte::capi::require;
using halvermonte::capi::statusOf;

halvermonte_engine::halvermonte_engine(std::unique_ptr<Machine> ownMachine)
    : machine(std::move(ownMachine)) {}

/// A host of the C interface may make any number of engines, so none leaves its drive iterator.
halvermonte_engine::~halvermonte_engine() { IOObjectRelease(engine.state().drivelist); }

namespace {

using MachineMaker = std::function<std::unique_ptr<Machine>()>;

void create(halvermonte_engine** engine, const MachineMaker& makeMachine) {
  require(engine, "engine");
  std::unique_ptr<Machine> machine = makeMachine();
  const ScopedMachine scope(*machine);
  *engine = new halvermonte_engine(std::move(machine));
}

/// Calls with the engine's machine answering the thread.
template <class Call>
halvermonte_status inEngine(halvermonte_engine* engine, const Call& call) noexcept {
  return statusOf([&] {
    require(engine, "engine");
    const ScopedMachine scope(*engine->machine);
    call(*engine);
  });
}

std::unique_ptr<Machine> makeBundled(const char* name) {
  require(name, "name");
  const BundledMachine* const machine = findBundledMachine(name);
  if (machine == nullptr) {
    throw Failure(HALVERMONTE_UNKNOWN_NAME,
                  "no bundled machine is called \"" + std::string(name) + "\"");
  }
  return SimulatedMachine::fromText(machine->json, std::string(machine->fileName));
}

}  // namespace

halvermonte_status halvermonte_engine_create(halvermonte_engine** engine) {
  return statusOf([&] { create(engine, [] { return makeThisComputer(); }); });
}

halvermonte_status halvermonte_engine_create_from_file(const char* path,
                                                       halvermonte_engine** engine) {
  return statusOf([&] {
    require(path, "path");
    create(engine, [path] { return SimulatedMachine::fromFile(path); });
  });
}

halvermonte_status halvermonte_engine_create_bundled(const char* name,
                                                     halvermonte_engine** engine) {
  return statusOf([&] { create(engine, [name] { return makeBundled(name); }); });
}

const char* halvermonte_bundled_name(size_t index) {
  const std::vector<BundledMachine>& machines = bundledMachines();
  return index < machines.size() ? machines[index].name.data() : nullptr;
}

void halvermonte_engine_free(halvermonte_engine* engine) { delete engine; }

halvermonte_status halvermonte_engine_pass(halvermonte_engine* engine) {
  KeptLines lines;
  const halvermonte_status status = inEngine(
      engine, [](halvermonte_engine& called) { called.engine.getSensorsInfo(called.record); });
  if (engine != nullptr) engine->messages = lines.take();
  return status;
}

halvermonte_status halvermonte_engine_next_tick(halvermonte_engine* engine) {
  return inEngine(engine, [](halvermonte_engine& called) {
    if (called.machine->nextTick()) return;
    throw Failure(HALVERMONTE_NOT_AVAILABLE, "this computer changes by itself: it has no ticks");
  });
}

halvermonte_status halvermonte_engine_messages(const halvermonte_engine* engine,
                                               const char** lines) {
  return statusOf([&] {
    require(engine, "engine");
    require(lines, "lines");
    *lines = engine->messages.c_str();
  });
}

halvermonte_status halvermonte_engine_processor_name(halvermonte_engine* engine,
                                                     const char** name) {
  return inEngine(engine, [name](halvermonte_engine& called) {
    require(name, "name");
    std::optional<Text>& known = called.processorName;
    if (!known) known = HalvermonteSensorsEngine::askSytemInfoForProcessorName();
    *name = known->view().data();
  });
}

halvermonte_status halvermonte_engine_physical_cores(halvermonte_engine* engine, int32_t* cores) {
  return inEngine(engine, [cores](halvermonte_engine&) {
    require(cores, "cores");
    *cores = HalvermonteSensorsEngine::physicalCores();
  });
}

halvermonte_status halvermonte_engine_process_cpu(halvermonte_engine* engine, int32_t identifier,
                                                  float* percent) {
  return inEngine(engine, [=](halvermonte_engine&) {
    require(percent, "percent");
    if (identifier <= 0) {
      throw Failure(HALVERMONTE_OUT_OF_RANGE,
                    "identifier: expected a number above 0, not " + std::to_string(identifier));
    }
    const float use = HalvermonteSensorsEngine::askSystemPS(identifier);
    if (use < 0) throw Failure(HALVERMONTE_NOT_AVAILABLE, "ps: expected a line with a number");
    *percent = use;
  });
}

const char* halvermonte_version(void) { return HALVERMONTE_VERSION; }
