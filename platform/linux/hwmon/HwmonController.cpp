#include "platform/linux/hwmon/HwmonController.hpp"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include "platform/linux/ProcessorCores.hpp"
#include "platform/linux/hwmon/FanAssignment.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr uint32_t fourCharacterCode(std::string_view text) {
  uint32_t code = 0;
  for (const char character : text) code = code << 8 | static_cast<uint8_t>(character);
  return code;
}

constexpr uint32_t kFloat = fourCharacterCode("flt ");
constexpr uint32_t kUnsigned8 = fourCharacterCode("ui8 ");
constexpr uint32_t kFanRecord = fourCharacterCode("{fds");

SMCKeyBytes floatBytes(float value) {
  SMCKeyBytes answer;
  std::memcpy(answer.bytes.data(), &value, sizeof value);
  return answer;
}

/// Four bytes of no meaning here, then the name, filled up with blanks.
SMCKeyBytes fanRecord(const std::string& name) {
  SMCKeyBytes answer;
  std::fill_n(answer.bytes.begin() + 4, 12, uint8_t{' '});
  std::copy(name.begin(), name.end(), answer.bytes.begin() + 4);
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
  const bool changed = watch_.hasChanged();
  // A chip is listed a moment before its files are there.
  if (changed || looksAgain_) lookAtChips();
  looksAgain_ = changed && pass_.number > 1;
}

void HwmonController::lookAtChips() {
  std::map<std::string, Sensor::Memory> memories;
  for (const FoundSensor& found : found_) {
    const Entry* const entry = find(fourCharacterCode(found.key));
    if (entry != nullptr) memories[identityOf(found)] = sensors_[entry->index].memory();
  }
  sensors_.clear();
  gates_.clear();
  entries_.clear();
  chips_ = chipsIn(calls_, sys_);
  found_ = sensorsOf(chips_);
  assignKeys(found_, {deviceTreeSensors(calls_, sys_), processorPackages(calls_, sys_),
                      driveTemperatures_});
  const auto fans = assignFans(found_, [this](const FoundSensor& fan) { return turns(fan); });
  fanNames_ = fanNames(fans);
  for (const FoundSensor& found : found_) {
    if (found.key.empty()) continue;
    addSensor(found);
    if (sensors_.back().isRare()) sensors_.back().remember(memories[identityOf(found)]);
  }
  addFanEntries();
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& first, const Entry& second) { return first.key < second.key; });
}

void HwmonController::addSensor(const FoundSensor& found) {
  const bool isFan = found.channel->quantity == Quantity::fan;
  entries_.push_back(
      {fourCharacterCode(found.key), isFan ? Kind::fanSpeed : Kind::value, sensors_.size()});
  sensors_.emplace_back(calls_, found.path(), traitsOf(found));
}

void HwmonController::addFanEntries() {
  for (size_t i = 0; i < fanNames_.size(); ++i) {
    entries_.push_back({fourCharacterCode("F" + std::to_string(i) + "ID"), Kind::fanName, i});
  }
  entries_.push_back({fourCharacterCode("FNum"), Kind::fanCount, 0});
}

Sensor::Traits HwmonController::traitsOf(const FoundSensor& found) {
  // Where a driver's numbers overflow they stop at the ends of 32 bits.
  constexpr int64_t kMost = INT32_MAX - 1;
  constexpr int64_t kMostTurns = 65534;  // 65535 is a register that says nothing
  Sensor::Traits traits{
      .unit = unitOf(found.channel->quantity), .lowest = -kMost, .highest = kMost};
  if (found.channel->quantity == Quantity::fan) {
    traits.lowest = 0;
    traits.highest = kMostTurns;
  } else if (found.channel->quantity == Quantity::temperature && !found.key.empty()) {
    traits.lowest = found.lowest * int64_t{1000};
    traits.highest = found.highest * int64_t{1000};
  }
  const Manner manner = mannerOf(found);
  // A reading starts the clock of a device anew that falls asleep by itself.
  const bool dozes = manner == Manner::maySleep &&
                     wordingOf(calls_, found.chip->parent + "/power/control") == "auto";
  traits.isRare = manner == Manner::command || manner == Manner::onRequest || dozes;
  traits.gates = gatesOf(found, manner);
  return traits;
}

std::vector<Gate*> HwmonController::gatesOf(const FoundSensor& found, Manner manner) {
  std::vector<Gate*> gates;
  if (manner == Manner::maySleep) {
    for (const char* file : {"/power/runtime_status", "/power_state"}) {
      const std::string path = found.chip->parent + file;
      if (!gates.empty() || !textOf(calls_, path)) continue;
      gates.push_back(gate(path, Gate::Kind::power));
    }
  }
  const std::string channel = found.chip->folder + "/" + found.channel->name;
  if (found.channel->hasFault) gates.push_back(gate(channel + "_fault", Gate::Kind::fault));
  // amdgpu tells by a fan's whether its speed is set by hand.
  const bool tellsEnabled = found.channel->hasEnable && (found.chip->driver != "amdgpu" ||
                                                         found.channel->quantity != Quantity::fan);
  if (tellsEnabled) gates.push_back(gate(channel + "_enable", Gate::Kind::enable));
  return gates;
}

Gate* HwmonController::gate(const std::string& path, Gate::Kind kind) {
  for (Gate& known : gates_) {
    if (known.path() == path) return &known;
  }
  return &gates_.emplace_back(calls_, path, kind);
}

bool HwmonController::turns(const FoundSensor& fan) {
  return Sensor(calls_, fan.path(), traitsOf(fan)).value(pass_).value_or(0) > 0;
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
      return {.dataSize = 16, .dataType = kFanRecord};
    case Kind::fanCount:
      return {.dataSize = 1, .dataType = kUnsigned8};
    default:
      return {.dataSize = sizeof(float), .dataType = kFloat};
  }
}

SMCKeyBytes HwmonController::bytes(uint32_t key) {
  const Entry* const entry = find(key);
  if (entry == nullptr) return {.result = kSMCKeyNotFound};
  if (entry->kind == Kind::fanName) return fanRecord(fanNames_[entry->index]);
  if (entry->kind == Kind::fanCount) return {.bytes = {static_cast<uint8_t>(fanNames_.size())}};
  const std::optional<double> value = sensors_[entry->index].value(pass_);
  if (!value && entry->kind == Kind::value) return {.code = kCodeError};
  return floatBytes(static_cast<float>(value.value_or(-1)));
}

SensorInventory HwmonController::inventory() {
  open();
  SensorInventory inventory;
  for (const FoundSensor& found : found_) inventory.push_back(listing(found));
  return inventory;
}

size_t HwmonController::sensors() const { return sensors_.size(); }

size_t HwmonController::deniedSensors() const {
  return static_cast<size_t>(std::count_if(sensors_.begin(), sensors_.end(),
                                           [](const Sensor& sensor) { return sensor.isDenied(); }));
}

SensorListing HwmonController::listing(const FoundSensor& found) {
  SensorListing listing{.driver = found.chip->driver,
                        .device = found.chip->device,
                        .file = found.channel->file,
                        .label = found.channel->label,
                        .quantity = std::string(nameOf(found.channel->quantity)),
                        .key = found.key,
                        .reason = found.key.empty() ? found.reason : "",
                        .state = "not read",
                        .raw = ""};
  const auto describe = [&](Sensor& sensor) {
    sensor.value(pass_);
    listing.state = sensor.state();
    listing.raw = sensor.raw();
  };
  if (const Entry* const entry = find(fourCharacterCode(found.key))) {
    describe(sensors_[entry->index]);
  } else if (mannerOf(found) != Manner::onRequest || driveTemperatures_) {
    Sensor once(calls_, found.path(), traitsOf(found));
    describe(once);
  }
  return listing;
}

}  // namespace halvermonte::linuxos
