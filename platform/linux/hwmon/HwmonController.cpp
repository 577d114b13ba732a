#include "platform/linux/hwmon/HwmonController.hpp"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <utility>

#include "platform/FanDescriptor.hpp"
#include "platform/FourCharacterCode.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/ProcessorCores.hpp"
#include "platform/linux/hwmon/DeviceTreeKeys.hpp"
#include "platform/linux/hwmon/FanAssignment.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr uint32_t kFloat = fourCharacterCode("flt ");
constexpr uint32_t kUnsigned8 = fourCharacterCode("ui8 ");

SMCKeyBytes floatBytes(float value) {
  SMCKeyBytes answer;
  std::memcpy(answer.bytes.data(), &value, sizeof value);
  return answer;
}

std::string identityOf(const FoundSensor& found) {
  return found.chip->device + " " + found.chip->driver + " " + found.channel->file;
}

}  // namespace

HwmonController::HwmonController(SystemCalls& calls, std::string sys, bool driveTemperatures)
    : calls_(calls),
      sys_(std::move(sys)),
      driveTemperatures_(driveTemperatures),
      watch_(calls, sys_ + "/class/hwmon") {}

void HwmonController::open() {
  pass_ = {pass_.number + 1, calls_.steadySeconds()};
  const bool changed = watch_.checkForChange();
  // The kernel lists a chip a moment before it adds the chip's files.
  if (changed || rescansAgain_) rescan();
  rescansAgain_ = changed && pass_.number > 1;
}

void HwmonController::rescan() {
  const std::map<std::string, Sensor::Memory> memories = memoriesByIdentity();
  sensors_.clear();
  gates_.clear();
  entries_.clear();
  findSensors();
  for (const FoundSensor& found : found_) {
    if (found.key.empty()) continue;
    addSensor(found);
    const auto memory = memories.find(identityOf(found));
    const bool isKept = sensors_.back().isRateLimited() && memory != memories.end();
    if (isKept) sensors_.back().remember(memory->second);
  }
  addFanEntries();
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& first, const Entry& second) { return first.key < second.key; });
}

std::map<std::string, Sensor::Memory> HwmonController::memoriesByIdentity() const {
  std::map<std::string, Sensor::Memory> memories;
  for (const FoundSensor& found : found_) {
    const Entry* const entry = find(fourCharacterCode(found.key));
    if (entry != nullptr) memories[identityOf(found)] = sensors_[entry->index].memory();
  }
  return memories;
}

void HwmonController::findSensors() {
  chips_ = chipsIn(calls_, sys_);
  found_ = sensorsOf(chips_);
  assignKeys(found_, {deviceTreeSensors(calls_, sys_), processorPackages(calls_, sys_),
                      driveTemperatures_});
  fanNames_ =
      fanNames(assignFans(found_, [this](const FoundSensor& fan) { return isTurning(fan); }));
}

void HwmonController::addSensor(const FoundSensor& found) {
  const bool isFan = found.channel->quantity == Quantity::fan;
  entries_.push_back(
      {fourCharacterCode(found.key), isFan ? Kind::fanSpeed : Kind::value, sensors_.size()});
  sensors_.emplace_back(calls_, found.path(), makeTraits(found));
}

void HwmonController::addFanEntries() {
  for (size_t i = 0; i < fanNames_.size(); ++i) {
    entries_.push_back({fourCharacterCode("F" + std::to_string(i) + "ID"), Kind::fanName, i});
  }
  entries_.push_back({fourCharacterCode("FNum"), Kind::fanCount, 0});
}

Sensor::Traits HwmonController::makeTraits(const FoundSensor& found) {
  // A driver clamps numbers that overflow to the ends of 32 bits.
  constexpr int64_t kMost = INT32_MAX - 1;
  constexpr int64_t kMostTurns = 65534;  // 65535 is an unset register
  Sensor::Traits traits{
      .unit = unitOf(found.channel->quantity), .lowest = -kMost, .highest = kMost};
  if (found.channel->quantity == Quantity::fan) {
    traits.lowest = 0;
    traits.highest = kMostTurns;
  } else if (found.channel->quantity == Quantity::temperature && !found.key.empty()) {
    traits.lowest = found.lowest * int64_t{1000};
    traits.highest = found.highest * int64_t{1000};
  }
  const ReadPolicy policy = readPolicyOf(found);
  // Each reading keeps a device awake for a while that would fall asleep by itself.
  const bool fallsAsleep = policy == ReadPolicy::maySleep &&
                           trimmedTextOf(calls_, found.chip->parent + "/power/control") == "auto";
  traits.isRateLimited =
      policy == ReadPolicy::command || policy == ReadPolicy::onRequest || fallsAsleep;
  traits.gates = addGates(found, policy);
  return traits;
}

std::vector<Gate*> HwmonController::addGates(const FoundSensor& found, ReadPolicy policy) {
  std::vector<Gate*> gates;
  if (policy == ReadPolicy::maySleep) {
    for (const char* file : {"/power/runtime_status", "/power_state"}) {
      const std::string path = found.chip->parent + file;
      if (!gates.empty() || !textOf(calls_, path)) continue;
      gates.push_back(findOrAddGate(path, Gate::Kind::power));
    }
  }
  const std::string channel = found.chip->folder + "/" + found.channel->name;
  if (found.channel->hasFault)
    gates.push_back(findOrAddGate(channel + "_fault", Gate::Kind::fault));
  // For a fan of amdgpu the file says whether its speed is set by hand.
  const bool hasEnableGate = found.channel->hasEnable && (found.chip->driver != "amdgpu" ||
                                                          found.channel->quantity != Quantity::fan);
  if (hasEnableGate) gates.push_back(findOrAddGate(channel + "_enable", Gate::Kind::enable));
  return gates;
}

Gate* HwmonController::findOrAddGate(const std::string& path, Gate::Kind kind) {
  for (Gate& known : gates_) {
    if (known.path() == path) return &known;
  }
  return &gates_.emplace_back(calls_, path, kind);
}

bool HwmonController::isTurning(const FoundSensor& fan) {
  return Sensor(calls_, fan.path(), makeTraits(fan)).read(pass_).value_or(0) > 0;
}

const HwmonController::Entry* HwmonController::find(uint32_t key) const {
  const auto place =
      std::lower_bound(entries_.begin(), entries_.end(), key,
                       [](const Entry& entry, uint32_t wanted) { return entry.key < wanted; });
  return place != entries_.end() && place->key == key ? &*place : nullptr;
}

SMCKeyInfo HwmonController::info(uint32_t key) const {
  const Entry* const entry = find(key);
  if (entry == nullptr) return {.result = kSMCKeyNotFound};
  switch (entry->kind) {
    case Kind::fanName:
      return {.dataSize = kFanDescriptorSize, .dataType = kFanDescriptorType};
    case Kind::fanCount:
      return {.dataSize = 1, .dataType = kUnsigned8};
    default:
      return {.dataSize = sizeof(float), .dataType = kFloat};
  }
}

SMCKeyBytes HwmonController::bytes(uint32_t key) {
  const Entry* const entry = find(key);
  if (entry == nullptr) return {.result = kSMCKeyNotFound};
  if (entry->kind == Kind::fanName) return {.bytes = fanDescriptor(fanNames_[entry->index])};
  if (entry->kind == Kind::fanCount) return {.bytes = {static_cast<uint8_t>(fanNames_.size())}};
  const std::optional<double> value = sensors_[entry->index].read(pass_);
  if (!value && entry->kind == Kind::value) return {.code = kCodeError};
  return floatBytes(static_cast<float>(value.value_or(-1)));
}

SensorInventory HwmonController::inventory() {
  open();
  SensorInventory inventory;
  for (const FoundSensor& found : found_) inventory.push_back(makeListing(found));
  return inventory;
}

size_t HwmonController::sensors() const { return sensors_.size(); }

size_t HwmonController::deniedSensors() const {
  return static_cast<size_t>(std::count_if(sensors_.begin(), sensors_.end(),
                                           [](const Sensor& sensor) { return sensor.isDenied(); }));
}

SensorListing HwmonController::makeListing(const FoundSensor& found) {
  SensorListing listing{.driver = found.chip->driver,
                        .device = found.chip->device,
                        .file = found.channel->file,
                        .label = found.channel->label,
                        .quantity = std::string(nameOf(found.channel->quantity)),
                        .key = found.key,
                        .reason = found.key.empty() ? found.reason : "",
                        .state = "not read",
                        .raw = ""};
  if (const Entry* const entry = find(fourCharacterCode(found.key))) {
    readInto(listing, sensors_[entry->index]);
  } else if (mayRead(found, driveTemperatures_)) {
    Sensor once(calls_, found.path(), makeTraits(found));
    readInto(listing, once);
  }
  return listing;
}

void HwmonController::readInto(SensorListing& listing, Sensor& sensor) const {
  sensor.read(pass_);
  listing.state = sensor.state();
  listing.raw = sensor.raw();
}

}  // namespace halvermonte::linuxos
