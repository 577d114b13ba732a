#include "monitor/MachineChoice.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "monitor/Line.hpp"
#include "monitor/Readings.hpp"
#include "monitor/StandardStreams.hpp"
#include "platform/Foundation.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "platform/simulated/BundledMachines.hpp"
#include "platform/simulated/MachineFileError.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

namespace halvermonte {

namespace {

constexpr std::string_view kFallback = "M1";

ChosenMachine simulated(std::unique_ptr<Machine> machine, const std::string& reason = "") {
  ChosenMachine chosen;
  chosen.isSimulated = true;
  chosen.title = machine->name() + ", simulated" + (reason.empty() ? "" : ": " + reason);
  chosen.machine = std::move(machine);
  return chosen;
}

std::unique_ptr<Machine> bundled(const BundledMachine& machine) {
  return SimulatedMachine::fromText(machine.json, std::string(machine.fileName));
}

std::unique_ptr<Machine> fromFile(const std::string& path) {
  if (access(path.c_str(), R_OK) != 0) {
    if (errno == ENOENT) {
      throw Failure("--machine: no bundled machine and no file is called \"" + path +
                    "\" (see --machine list)");
    }
    throw Failure(path + ": " + std::strerror(errno));
  }
  return SimulatedMachine::fromFile(path);
}

ChosenMachine named(const std::string& name) {
  try {
    const BundledMachine* const machine = findBundledMachine(name);
    return simulated(machine != nullptr ? bundled(*machine) : fromFile(name));
  } catch (const MachineFileError& error) {
    throw Failure(error.what(), 2);
  }
}

std::string hintOf(Machine& machine, Offer offer) {
  const SensorCounts sensors = machine.sensorCounts();
  if (sensors.refused > 0) {
    return "sensors that this user may not read: " + std::to_string(sensors.refused) +
           " (see --list)";
  }
  if (offer != Offer::sensors && sensors.known > 0) {
    return "no sensor gives a reading now (see --list)";
  }
  switch (offer) {
    case Offer::nothing:
      return "no sensors and no drives to read here (see --machine list for others)";
    case Offer::drivesAlone:
      return "no temperatures and no fans to read here: a virtual machine, a container, or drivers "
             "that are not loaded";
    case Offer::sensors:
      break;
  }
  return "";
}

ChosenMachine host(std::unique_ptr<Machine> machine, Offer offer) {
  ChosenMachine chosen;
  chosen.hint = hintOf(*machine, offer);
  chosen.title = (machine->isThisComputer() ? "This computer: " : "") + machine->name();
  chosen.machine = std::move(machine);
  return chosen;
}

}  // namespace

Offer offerOf(Machine& machine) {
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  const auto record = std::make_shared<StatisticsData>();
  const auto reason = foundation::reasonRaisedBy([&] { engine.getSensorsInfo(record); });
  if (reason || !temperatureReadings(*record).empty() || !fanReadings(*record).empty()) {
    return Offer::sensors;
  }
  return machine.driveCount().value_or(0) > 0 ? Offer::drivesAlone : Offer::nothing;
}

ChosenMachine chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer) {
  if (options.machine && options.machine != "host") return named(*options.machine);
  const Offer offer = offerOf(*thisComputer);
  if (options.machine || offer != Offer::nothing) return host(std::move(thisComputer), offer);
  return simulated(bundled(*findBundledMachine(kFallback)), "this computer offers nothing to read");
}

ChosenMachine chooseMachine(const Options& options) {
  const LinuxRoots roots{.sys = options.sys, .proc = options.proc};
  const LinuxOptions asked{.driveTemperatures = options.driveTemperatures};
  return chooseMachine(options, std::make_unique<LinuxMachine>(roots, asked));
}

std::string machineList() {
  size_t nameCells = 0;
  for (const BundledMachine& machine : bundledMachines()) {
    nameCells = std::max(nameCells, cells(machine.name));
  }
  std::string list;
  for (const BundledMachine& machine : bundledMachines()) {
    list += leftAligned(machine.name, nameCells) + "  " + machine.description() + "\n";
  }
  return list;
}

}  // namespace halvermonte
