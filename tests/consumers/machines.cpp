// A host that does not read this computer: it tests itself over machine files, and brings a machine
// of its own.
#include <cstdint>
#include <halvermonte/BundledMachines.hpp>
#include <halvermonte/HalvermonteSensorsEngine.hpp>
#include <halvermonte/Machine.hpp>
#include <halvermonte/MachineRecorder.hpp>
#include <halvermonte/Readings.hpp>
#include <halvermonte/SensorSources.hpp>
#include <halvermonte/SimulatedMachine.hpp>
#include <halvermonte/StatisticsData.hpp>
#include <halvermonte/ThisComputer.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace halvermonte;

std::vector<Reading> temperaturesOf(Machine& machine) {
  const ScopedMachine scope(machine);
  HalvermonteSensorsEngine engine;
  return temperatures(*engine.getSensorsInfo(std::make_shared<StatisticsData>()));
}

class Kettle : public Machine {
 public:
  double clock() override { return 1e9; }
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    HIDServices services;
    if (kind == HIDSensorKind::temperature) services.push_back({"gas gauge battery", 99});
    return std::make_shared<HIDServices>(services);
  }
};

bool readsItsOwnMachine() {
  Kettle kettle;
  return temperaturesOf(kettle) ==
         std::vector<Reading>{{"Gas Gauge Battery", 99, Unit::degreesCelsius}};
}

bool wrapsAMachine() {
  class Colder : public MachineWrapper {
   public:
    using MachineWrapper::MachineWrapper;
    std::shared_ptr<const HIDServices> hidServices(HIDSensorKind /*kind*/) override {
      return nullptr;
    }
  };
  Kettle kettle;
  Colder colder(kettle);
  return colder.clock() == 1e9 && temperaturesOf(colder).empty();
}

bool readsEveryBundledMachine() {
  for (const BundledMachine& bundled : bundledMachines()) {
    const auto machine = SimulatedMachine::fromText(bundled.json, std::string(bundled.fileName));
    if (temperaturesOf(*machine).empty()) return false;
  }
  return !bundledMachines().empty();
}

bool replaysARecording() {
  Kettle kettle;
  MachineRecorder recorder(kettle, MachineRecorder::HostName::leftOut);
  const std::vector<Reading> seen = temperaturesOf(recorder);
  const auto replay = SimulatedMachine::fromText(recorder.machineFile(), "recording.json");
  return !seen.empty() && temperaturesOf(*replay) == seen;
}

bool catchesTheErrorInAFile() {
  try {
    SimulatedMachine::fromText("[]", "list.json");
  } catch (const MachineFileError& error) {
    return std::string(error.what()).starts_with("list.json: /: expected ");
  }
  return false;
}

bool listsTheSensors() {
  Kettle kettle;
  const ScopedMachine scope(kettle);
  const HalvermonteSensorsEngine engine;
  const std::vector<SensorSource> sources = sensorSources(engine, kettle);
  return sources.size() == 1 && sources[0].label == "gas gauge battery" && sources[0].number == 99;
}

bool readsATree() {
  const auto tree = makeThisComputer({.sys = "/nonexistent", .proc = "/nonexistent"});
  return !tree->isThisComputer() && temperaturesOf(*tree).empty();
}

int check(bool holds, const char* what) {
  if (!holds) std::cerr << "does not hold: " << what << '\n';
  return holds ? 0 : 1;
}

}  // namespace

int main() {
  return check(readsItsOwnMachine(), "a pass reads a machine of the host's") +
         check(wrapsAMachine(), "a host overrides one answer of a machine") +
         check(readsEveryBundledMachine(), "a pass reads every bundled machine") +
         check(replaysARecording(), "a recording gives the same readings") +
         check(catchesTheErrorInAFile(), "the error in a machine file is caught") +
         check(listsTheSensors(), "the sources have the machine's sensor") +
         check(readsATree(), "a tree is read in place of this computer");
}
