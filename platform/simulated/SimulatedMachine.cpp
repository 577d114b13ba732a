#include "halvermonte/SimulatedMachine.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <utility>
#include <variant>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/Foundation.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/MachineFile.hpp"
#include "platform/simulated/SMCAnswer.hpp"
#include "platform/simulated/SimulatedController.hpp"
#include "platform/simulated/Wave.hpp"

namespace halvermonte {
namespace {

// What a machine has before its first tick says otherwise.
const HIDServiceList kNoServices{std::in_place};
const DriveList kNoDrives{std::in_place};

std::optional<double> readingAt(double time, const HIDServiceDescription& service) {
  if (const auto* value = std::get_if<double>(&service.reading)) return *value;
  if (const auto* wave = std::get_if<Wave>(&service.reading)) return wave->at(time);
  return std::nullopt;
}

template <class Key, class Content>
const Content* find(const std::map<Key, Content>& map, const Key& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : &found->second;
}

}  // namespace

/// What the ticks so far have led to.
struct SimulatedState {
  explicit SimulatedState(MachineFile file);
  void apply(const MachineTick& tick);

  const MachineFile file;
  size_t tick = 0;
  double clock = 0;
  SimulatedController smc;
  // What stands in the file, of the ticks so far.
  std::array<const HIDServiceList*, kHIDSensorKinds> hid;
  const DriveList* drives = &kNoDrives;
  std::optional<size_t> driveCount;  ///< the first tick's: drivers are matched once
  const std::string* drivesRaise = nullptr;
  /// The lists at the clock's time, made when first asked for.
  std::array<std::shared_ptr<const HIDServices>, kHIDSensorKinds> hidServices;
};

SimulatedState::SimulatedState(MachineFile machineFile) : file(std::move(machineFile)) {
  hid.fill(&kNoServices);
  apply(file.ticks.front());
  if (*drives) driveCount = (*drives)->size();
}

void SimulatedState::apply(const MachineTick& change) {
  clock = change.time;
  smc.apply(change.smc);
  for (size_t kind = 0; kind < kHIDSensorKinds; ++kind) {
    const std::optional<HIDServiceList>& list = change.hid[kind];
    if (list) hid[kind] = &*list;
  }
  hidServices = {};
  if (change.drives) drives = &*change.drives;
  drivesRaise = change.drivesRaise ? &*change.drivesRaise : nullptr;
}

std::unique_ptr<SimulatedMachine> SimulatedMachine::fromFile(const std::string& path) {
  auto state = std::make_unique<SimulatedState>(MachineFile::fromFile(path));
  return std::unique_ptr<SimulatedMachine>(new SimulatedMachine(std::move(state)));
}

std::unique_ptr<SimulatedMachine> SimulatedMachine::fromText(std::string_view json,
                                                             const std::string& fileName) {
  auto state = std::make_unique<SimulatedState>(MachineFile::fromText(json, fileName));
  return std::unique_ptr<SimulatedMachine>(new SimulatedMachine(std::move(state)));
}

SimulatedMachine::SimulatedMachine(std::unique_ptr<SimulatedState> state)
    : state_(std::move(state)) {}

SimulatedMachine::~SimulatedMachine() = default;

bool SimulatedMachine::nextTick() {
  if (state_->tick + 1 < state_->file.ticks.size()) {
    state_->apply(state_->file.ticks[++state_->tick]);
  } else {
    state_->clock += 1;
    state_->drivesRaise = nullptr;
    state_->hidServices = {};
  }
  return true;
}

std::string SimulatedMachine::name() { return state_->file.name; }

bool SimulatedMachine::answersWideCalls() { return state_->smc.answersWideCalls; }

std::vector<SensorName> SimulatedMachine::sensorNames() { return state_->file.sensorNames; }

std::optional<size_t> SimulatedMachine::driveCount() { return state_->driveCount; }

double SimulatedMachine::clock() { return state_->clock; }

std::optional<std::string> SimulatedMachine::localizedHostName() { return state_->file.hostName; }

Process SimulatedMachine::process(int32_t /*identifier*/) {
  return UnreadableProcess{"a simulated machine has no processes"};
}

SMCService SimulatedMachine::smcService() {
  switch (state_->smc.state()) {
    case ControllerState::missing:
      return {};
    case ControllerState::unmatched:
      return {.code = state_->smc.code};
    default:
      return {.present = true};
  }
}

uint32_t SimulatedMachine::openSMC() { return state_->smc.openCode(); }

SMCKeyInfo SimulatedMachine::smcKeyInfo(uint32_t key) {
  const SMCAnswer* const found = state_->smc.find(key);
  if (found == nullptr) return {.code = state_->smc.absentCode, .result = kSMCKeyNotFound};
  const SMCAnswer& answer = *found;
  if (answer.infoCode != kCodeSuccess || answer.infoResult != 0) {
    return {.code = answer.infoCode, .result = answer.infoResult};
  }
  return {.dataSize = answer.dataSize, .dataType = answer.dataType};
}

SMCKeyBytes SimulatedMachine::smcKeyBytes(uint32_t key) {
  const SMCAnswer* const found = state_->smc.find(key);
  if (found == nullptr) return {.code = state_->smc.absentCode, .result = kSMCKeyNotFound};
  const SMCAnswer& answer = *found;
  if (answer.readCode != kCodeSuccess || answer.readResult != 0) {
    return {.code = answer.readCode, .result = answer.readResult};
  }
  return {.bytes = answer.bytesAt(state_->clock)};
}

std::shared_ptr<const HIDServices> SimulatedMachine::hidServices(HIDSensorKind kind) {
  const auto index = static_cast<size_t>(kind);
  const HIDServiceList& list = *state_->hid[index];
  if (list && !state_->hidServices[index]) {
    HIDServices services;
    services.reserve(list->size());
    for (const HIDServiceDescription& service : *list) {
      services.push_back({service.product, readingAt(state_->clock, service)});
    }
    state_->hidServices[index] = std::make_shared<const HIDServices>(std::move(services));
  }
  return state_->hidServices[index];
}

void SimulatedMachine::beginDriveWalk() {
  if (state_->drivesRaise != nullptr) throw PlatformException(*state_->drivesRaise);
}

Drive SimulatedMachine::drive(size_t index) {
  const DriveList& drives = *state_->drives;
  if (!drives || index >= drives->size()) return UnreadableDrive{};
  return (*drives)[index];
}

std::optional<std::string> SimulatedMachine::outputOfCommand(const std::string& command) {
  const auto* answer = find(state_->file.commands, command);
  return answer == nullptr ? std::string() : *answer;
}

std::optional<int64_t> SimulatedMachine::kernelVariable(const std::string& name) {
  const auto* value = find(state_->file.kernelVariables, name);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

SensorInventory SimulatedMachine::inventory() {
  SensorInventory sensors;
  for (const auto& [key, answer] : state_->smc.keys) sensors.emplace_back().key = charactersOf(key);
  std::ranges::sort(sensors, {}, &SensorListing::key);
  return sensors;
}

}  // namespace halvermonte
