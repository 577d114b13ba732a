#include "monitor/MachineChoice.hpp"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "halvermonte/BundledMachines.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/MachineFileError.hpp"
#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/SimulatedMachine.hpp"
#include "halvermonte/ThisComputer.hpp"
#include "monitor/Failure.hpp"
#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"

namespace halvermonte {

namespace {

constexpr std::string_view kFallback = "M1";

/// A recording of a real computer leaves its host's name out unless the user asks for it.
std::unique_ptr<MachineRecorder> recorderFor(const ChosenMachine& chosen, const Options& options) {
  if (!options.recordingPath) return nullptr;
  const bool isNamed = chosen.isSimulated || options.withHostName;
  return std::make_unique<MachineRecorder>(
      *chosen.machine,
      isNamed ? MachineRecorder::HostName::kept : MachineRecorder::HostName::leftOut);
}

std::unique_ptr<Sampling> samplingOf(ChosenMachine chosen, const Options& options) {
  chosen.recorder = recorderFor(chosen, options);
  return std::make_unique<Sampling>(std::move(chosen));
}

std::unique_ptr<Sampling> simulated(std::unique_ptr<Machine> machine, const Options& options,
                                    const std::string& reason = "") {
  std::string title = machine->name() + ", simulated" + (reason.empty() ? "" : ": " + reason);
  return samplingOf({.machine = std::move(machine),
                     .title = std::move(title),
                     .isSimulated = true,
                     .reason = reason},
                    options);
}

std::unique_ptr<Sampling> real(std::unique_ptr<Machine> machine, const Options& options) {
  std::string title = (machine->isThisComputer() ? "This computer: " : "") + machine->name();
  return samplingOf({.machine = std::move(machine), .title = std::move(title)}, options);
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

std::unique_ptr<Machine> named(const std::string& name) {
  try {
    const BundledMachine* const machine = findBundledMachine(name);
    return machine != nullptr ? bundled(*machine) : fromFile(name);
  } catch (const MachineFileError& error) {
    throw Failure(error.what(), ExitStatus::wrongUse);
  }
}

/// This computer, or the folders that the options name in its place.
std::unique_ptr<Machine> computerOf(const Options& options) {
  ComputerFolders folders;
  folders.sys = options.sys.value_or(folders.sys);
  folders.proc = options.proc.value_or(folders.proc);
  return makeThisComputer(std::move(folders), {.driveTemperatures = options.driveTemperatures});
}

/// Sensors of the kinds that are shown. A machine that lists only keys names no kind.
size_t temperaturesAndFans(const SensorInventory& inventory) {
  const auto isOne = [](const SensorListing& sensor) {
    return !sensor.key.empty() || sensor.quantity == "temperature" || sensor.quantity == "fan";
  };
  return static_cast<size_t>(std::count_if(inventory.begin(), inventory.end(), isOne));
}

/// Why a computer shows no sensor.
std::string reasonForNone(const SensorInventory& inventory, Offer offer) {
  if (const size_t sensors = temperaturesAndFans(inventory); sensors > 0) {
    return "none of the sensors here gives a reading that is shown: " + std::to_string(sensors) +
           " (see --list)";
  }
  if (!inventory.empty()) return "the sensors here are neither temperatures nor fans (see --list)";
  if (offer == Offer::drivesAlone) {
    return "no temperatures and no fans to read here: a virtual machine, a container, or drivers "
           "that are not loaded";
  }
  return "no sensors and no drives to read here (see --machine list for others)";
}

std::string hintOf(Machine& machine, Offer offer) {
  const size_t refused = machine.refusedSensors();
  if (refused > 0) {
    return "sensors that this user may not read: " + std::to_string(refused) + " (see --list)";
  }
  return offer == Offer::sensors ? "" : reasonForNone(machine.inventory(), offer);
}

}  // namespace

Offer offerOf(Sampling& sampling) {
  const PassView& view = sampling.firstPass();
  const bool isEmpty = view.temperatures.empty() && view.fans.empty();
  if (view.exception || !isEmpty) return Offer::sensors;
  return view.drives > 0 ? Offer::drivesAlone : Offer::nothing;
}

Choice chooseMachine(const Options& options, std::unique_ptr<Machine> thisComputer) {
  if (options.machine && options.machine != "host") {
    return {simulated(named(*options.machine), options), ""};
  }
  std::unique_ptr<Sampling> sampling = real(std::move(thisComputer), options);
  const Offer offer = offerOf(*sampling);
  if (options.machine || offer != Offer::nothing) {
    std::string hint = hintOf(sampling->machine(), offer);
    return {std::move(sampling), std::move(hint)};
  }
  sampling.reset();
  return {simulated(bundled(*findBundledMachine(kFallback)), options,
                    "this computer offers nothing to read"),
          ""};
}

Choice chooseMachine(const Options& options) { return chooseMachine(options, computerOf(options)); }

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
