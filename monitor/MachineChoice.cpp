#include "monitor/MachineChoice.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <numeric>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

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

std::unique_ptr<Sampling> simulated(std::unique_ptr<Machine> machine, const Options& options) {
  std::string title = machine->name() + ", simulated";
  return samplingOf({.machine = std::move(machine), .title = std::move(title), .isSimulated = true},
                    options);
}

std::unique_ptr<Sampling> real(std::unique_ptr<Machine> machine, const Options& options) {
  std::string title = (machine->isThisComputer() ? "This computer: " : "") + machine->name();
  return samplingOf({.machine = std::move(machine), .title = std::move(title)}, options);
}

std::unique_ptr<Machine> bundled(const BundledMachine& machine) {
  return SimulatedMachine::fromText(machine.json, std::string(machine.fileName));
}

char lowered(char letter) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

/// How many characters to insert, remove or replace to make one text of the other, in any case.
size_t distance(std::string_view one, std::string_view other) {
  std::vector<size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < one.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < other.size(); ++j) {
      const size_t replaced = diagonal + (lowered(one[i]) == lowered(other[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
    }
  }
  return row.back();
}

/// The bundled machine that the user may have meant: its name begins like that, or is the closest.
/// "" if none is close.
std::string_view closestName(const std::string& asked) {
  size_t least = asked.size() / 2 + 1;
  std::string_view closest;
  for (const BundledMachine& machine : bundledMachines()) {
    if (distance(asked, machine.name.substr(0, asked.size())) == 0) return machine.name;
    const size_t edits = distance(asked, machine.name);
    if (edits >= least) continue;
    least = edits;
    closest = machine.name;
  }
  return closest;
}

[[noreturn]] void refuseUnknown(const std::string& asked) {
  const std::string_view closest = closestName(asked);
  throw Failure("--machine: no simulated computer and no file is called \"" + asked + "\"" +
                    (closest.empty() ? "" : "; is it \"" + std::string(closest) + "\"?") +
                    " (see --machine list)",
                ExitStatus::wrongUse);
}

std::unique_ptr<Machine> fromFile(const std::string& name) {
  const std::string path = name == "-" ? "/dev/stdin" : name;
  if (access(path.c_str(), R_OK) != 0) {
    if (errno == ENOENT) refuseUnknown(name);
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

/// The folder that the option names, or the usual one.
std::string folder(const char* option, const std::optional<std::string>& path,
                   const std::string& usual) {
  if (!path) return usual;
  const int descriptor = open(path->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) {
    throw Failure(std::string(option) + " " + *path + ": " + std::strerror(errno),
                  ExitStatus::wrongUse);
  }
  close(descriptor);
  return *path;
}

/// This computer, or the folders that the options name in its place.
std::unique_ptr<Machine> computerOf(const Options& options) {
  ComputerFolders folders;
  folders.sys = folder("--sys", options.sys, folders.sys);
  folders.proc = folder("--proc", options.proc, folders.proc);
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
  return "no sensors and no drives to read here (see --machine list for simulated computers)";
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
  std::unique_ptr<Sampling> sampling = real(std::move(thisComputer), options);
  const Offer offer = offerOf(*sampling);
  std::string hint = hintOf(sampling->machine(), offer);
  return {std::move(sampling), std::move(hint)};
}

Choice chooseMachine(const Options& options) {
  if (options.machine == "host") return chooseMachine(options, computerOf(options));
  return {simulated(named(options.machine), options), ""};
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
