#include "platform/simulated/SimulatedMachine.hpp"
#include "halvermonte/Exceptions.hpp"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <variant>

#include "platform/Foundation.hpp"
#include "platform/FourCharacterCode.hpp"
#include "platform/portable/Inventory.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/SMCAnswer.hpp"
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

std::unique_ptr<SimulatedMachine> SimulatedMachine::fromFile(const std::string& path) {
  return std::make_unique<SimulatedMachine>(MachineFile::fromFile(path));
}

std::unique_ptr<SimulatedMachine> SimulatedMachine::fromText(std::string_view json,
                                                             const std::string& fileName) {
  return std::make_unique<SimulatedMachine>(MachineFile::fromText(json, fileName));
}

SimulatedMachine::SimulatedMachine(MachineFile file) : file_(std::move(file)), drives_(&kNoDrives) {
  hid_.fill(&kNoServices);
  apply(file_.ticks.front());
  if (*drives_) driveCount_ = (*drives_)->size();
}

bool SimulatedMachine::nextTick() {
  if (tick_ + 1 < file_.ticks.size()) {
    apply(file_.ticks[++tick_]);
  } else {
    clock_ += 1;
    drivesRaise_ = nullptr;
    hidServices_ = {};
  }
  return true;
}

void SimulatedMachine::apply(const MachineTick& tick) {
  clock_ = tick.time;
  smc_.apply(tick.smc);
  for (size_t kind = 0; kind < kHIDSensorKinds; ++kind) {
    const std::optional<HIDServiceList>& list = tick.hid[kind];
    if (list) hid_[kind] = &*list;
  }
  hidServices_ = {};
  if (tick.drives) drives_ = &*tick.drives;
  drivesRaise_ = tick.drivesRaise ? &*tick.drivesRaise : nullptr;
}

void SimulatedMachine::Controller::apply(const SMCChange& change) {
  if (change.service) saidState = change.service;
  keysGiven |= change.givesKeys;
  code = change.code.value_or(code);
  absentCode = change.absentCode.value_or(absentCode);
  answersWideCalls = change.answersWideCalls.value_or(answersWideCalls);
  for (const auto& [key, answer] : change.keys) {
    if (answer) {
      keys.insert_or_assign(key, &*answer);
    } else {
      keys.erase(key);
    }
  }
}

ControllerState SimulatedMachine::Controller::state() const {
  return saidState.value_or(keysGiven ? ControllerState::present : ControllerState::missing);
}

SMCService SimulatedMachine::smcService() {
  switch (smc_.state()) {
    case ControllerState::missing:
      return {};
    case ControllerState::unmatched:
      return {.code = smc_.code};
    default:
      return {.present = true};
  }
}

uint32_t SimulatedMachine::openSMC() {
  return smc_.state() == ControllerState::refused ? smc_.code : kCodeSuccess;
}

SMCKeyInfo SimulatedMachine::smcKeyInfo(uint32_t key) {
  const auto found = smc_.keys.find(key);
  if (found == smc_.keys.end()) return {.code = smc_.absentCode, .result = kSMCKeyNotFound};
  const SMCAnswer& answer = *found->second;
  if (answer.infoCode != kCodeSuccess || answer.infoResult != 0) {
    return {.code = answer.infoCode, .result = answer.infoResult};
  }
  return {.dataSize = answer.dataSize, .dataType = answer.dataType};
}

SMCKeyBytes SimulatedMachine::smcKeyBytes(uint32_t key) {
  const auto found = smc_.keys.find(key);
  if (found == smc_.keys.end()) return {.code = smc_.absentCode, .result = kSMCKeyNotFound};
  const SMCAnswer& answer = *found->second;
  if (answer.readCode != kCodeSuccess || answer.readResult != 0) {
    return {.code = answer.readCode, .result = answer.readResult};
  }
  return {.bytes = answer.bytesAt(clock_)};
}

std::shared_ptr<const HIDServices> SimulatedMachine::hidServices(HIDSensorKind kind) {
  const auto index = static_cast<size_t>(kind);
  const HIDServiceList& list = *hid_[index];
  if (list && !hidServices_[index]) {
    HIDServices services;
    services.reserve(list->size());
    for (const HIDServiceDescription& service : *list) {
      services.push_back({service.product, readingAt(clock_, service)});
    }
    hidServices_[index] = std::make_shared<const HIDServices>(std::move(services));
  }
  return hidServices_[index];
}

void SimulatedMachine::beginDriveWalk() {
  if (drivesRaise_ != nullptr) throw PlatformException(*drivesRaise_);
}

Drive SimulatedMachine::drive(size_t index) {
  const DriveList& drives = *drives_;
  if (!drives || index >= drives->size()) return UnreadableDrive{};
  return (*drives)[index];
}

std::optional<std::string> SimulatedMachine::outputOfCommand(const std::string& command) {
  const auto* answer = find(file_.commands, command);
  return answer == nullptr ? std::string() : *answer;
}

std::optional<int64_t> SimulatedMachine::kernelVariable(const std::string& name) {
  const auto* value = find(file_.kernelVariables, name);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

SensorInventory SimulatedMachine::inventory() {
  SensorInventory sensors;
  for (const auto& [key, answer] : smc_.keys) sensors.emplace_back().key = charactersOf(key);
  std::ranges::sort(sensors, {}, &SensorListing::key);
  return sensors;
}

}  // namespace halvermonte
