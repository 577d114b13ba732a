#include "platform/linux/hwmon/HwmonController.hpp"
#include "platform/linux/hwmon/NameTable.hpp"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

#include "catalogue/BuiltInNames.hpp"
#include "halvermonte/FourCharacterCode.hpp"
#include "platform/FanDescriptor.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/ProcessorCores.hpp"
#include "platform/linux/ProcessorName.hpp"
#include "platform/linux/hwmon/DeviceTreeKeys.hpp"
#include "platform/linux/hwmon/FanAssignment.hpp"
#include "platform/linux/hwmon/FileSource.hpp"
#include "platform/linux/hwmon/ReadingRule.hpp"
#include "platform/linux/hwmon/SourceReader.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr uint32_t kFloat = fourCharacterCode("flt ");
constexpr uint32_t kUnsigned8 = fourCharacterCode("ui8 ");

SMCKeyBytes floatBytes(float value) {
  SMCKeyBytes answer;
  std::memcpy(answer.bytes.data(), &value, sizeof value);
  return answer;
}

}  // namespace

HwmonController::HwmonController(SystemCalls& calls, HwmonOptions options)
    : calls_(calls),
      options_(std::move(options)),
      watch_(calls, options_.sys + "/class/hwmon"),
      nvidia_(calls, options_.sys, options_.managementLibrary),
      trial_(calls) {}

void HwmonController::open() {
  begin();
  tryOut(keyedSensors_);
}

void HwmonController::begin() {
  pass_ = {pass_.number + 1, calls_.steadySeconds()};
  const bool changed = watch_.checkForChange();
  // The kernel lists a chip a moment before it adds the chip's files.
  if (changed || rescansAgain_) rescan();
  rescansAgain_ = changed && pass_.number > 1;
}

std::vector<SensorName> HwmonController::names() {
  begin();
  std::vector<SensorName> names;
  for (const FoundSensor& found : found_) {
    if (!found.isBuiltIn && !found.name.empty()) names.push_back({found.key, found.name});
  }
  return names;
}

void HwmonController::rescan() {
  formerSensors_ = std::exchange(sensors_, {});
  keyedSensors_.clear();
  gates_.clear();
  entries_.clear();
  findSensors();
  for (const FoundSensor& found : found_) {
    if (!found.key.empty()) {
      addSensor(found);
    } else if (formerSensors_.contains(found.path())) {
      findOrAddSensor(found);
    }
  }
  addFanEntries();
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& first, const Entry& second) { return first.key < second.key; });
  forgetSensorsWithoutKeys();
  formerSensors_.clear();
}

void HwmonController::findChips() {
  chips_ = chipsIn(calls_, options_.sys);
  for (Chip& chip : nvidia_.findChips()) {
    const auto place = std::upper_bound(chips_.begin(), chips_.end(), chip, standsBefore);
    chips_.insert(place, std::move(chip));
  }
}

void HwmonController::findSensors() {
  findChips();
  found_ = sensorsOf(chips_);
  assignKeys(calls_, chips_, found_,
             {.sys = options_.sys,
              .deviceTree = deviceTreeSensors(calls_, options_.sys),
              .builtInNames = namesOnThisProcessor(),
              .driveTemperatures = options_.driveTemperatures});
  fanNames_ =
      fanNames(assignFans(found_, [this](const FoundSensor& fan) { return isTurning(fan); }));
}

std::vector<NamedKey> HwmonController::namesOnThisProcessor() const {
  const int64_t cores = physicalCores(calls_, options_.sys, options_.proc).value_or(0);
  return builtInNames(processorName(calls_, options_.sys, options_.proc).text,
                      static_cast<int32_t>(cores));
}

void HwmonController::addSensor(const FoundSensor& found) {
  const bool isFan = found.channel->quantity == Quantity::fan;
  const Kind kind = isFan ? Kind::fanSpeed : Kind::value;
  for (const std::string& key : {found.key, found.alias}) {
    if (!key.empty()) entries_.push_back({fourCharacterCode(key), kind, keyedSensors_.size()});
  }
  keyedSensors_.push_back(&findOrAddSensor(found));
}

void HwmonController::addFanEntries() {
  for (size_t i = 0; i < fanNames_.size(); ++i) {
    entries_.push_back({fourCharacterCode("F" + std::to_string(i) + "ID"), Kind::fanName, i});
  }
  entries_.push_back({fourCharacterCode("FNum"), Kind::fanCount, 0});
}

Sensor& HwmonController::findOrAddSensor(const FoundSensor& found) {
  const std::string path = found.path();
  KnownSensor& known = sensors_[path];
  if (known.sensor) return *known.sensor;
  known.identity = found.identity;
  known.sensor = std::make_unique<Sensor>(std::make_shared<SourceReader>(calls_, makeSource(found)),
                                          makeTraits(found));
  if (const auto former = findFormer(path, known.identity); former != formerSensors_.end()) {
    known.sensor->continueFrom(*former->second.sensor, former->first == path);
    formerSensors_.erase(former);
  }
  return *known.sensor;
}

HwmonController::KnownSensors::iterator HwmonController::findFormer(const std::string& path,
                                                                    const std::string& identity) {
  const auto isSame = [&](const auto& former) { return former.second.identity == identity; };
  const auto atPath = formerSensors_.find(path);
  if (atPath != formerSensors_.end() && isSame(*atPath)) return atPath;
  return std::find_if(formerSensors_.begin(), formerSensors_.end(), isSame);
}

std::unique_ptr<Source> HwmonController::makeSource(const FoundSensor& found) {
  if (auto source = nvidia_.makeSource(*found.chip, *found.channel)) return source;
  const std::string channel = found.chip->folder + "/" + found.channel->name;
  std::vector<Gate> gates;
  if (found.channel->hasFault) gates.emplace_back(calls_, channel + "_fault", Gate::Kind::fault);
  // For a fan of amdgpu the file says whether its speed is set by hand.
  const bool hasEnableGate = found.channel->hasEnable && (found.chip->driver != "amdgpu" ||
                                                          found.channel->quantity != Quantity::fan);
  if (hasEnableGate) gates.emplace_back(calls_, channel + "_enable", Gate::Kind::enable);
  return std::make_unique<FileSource>(calls_, found.path(), std::move(gates));
}

Sensor::Traits HwmonController::makeTraits(const FoundSensor& found) {
  Sensor::Traits traits{.unit = unitOf(found.channel->quantity),
                        .rule = readingRuleOf(calls_, found)};
  const ReadPolicy policy = readPolicyOf(found);
  // Each reading keeps a device awake for a while that would fall asleep by itself.
  const bool fallsAsleep = policy == ReadPolicy::maySleep &&
                           trimmedTextOf(calls_, found.chip->parent + "/power/control") == "auto";
  traits.isRateLimited =
      policy == ReadPolicy::command || policy == ReadPolicy::onRequest || fallsAsleep;
  if (policy == ReadPolicy::maySleep) traits.powerGate = findOrAddPowerGate(found);
  return traits;
}

PowerGate* HwmonController::findOrAddPowerGate(const FoundSensor& found) {
  for (const char* file : {"/power/runtime_status", "/power_state"}) {
    const std::string path = found.chip->parent + file;
    const auto known = std::find_if(gates_.begin(), gates_.end(),
                                    [&](const PowerGate& gate) { return gate.path() == path; });
    if (known != gates_.end()) return &*known;
    if (textOf(calls_, path)) return &gates_.emplace_back(calls_, path);
  }
  return nullptr;
}

bool HwmonController::isTurning(const FoundSensor& fan) {
  Sensor* const sensor = &findOrAddSensor(fan);
  tryOut({&sensor, 1});
  return sensor->read(pass_).value_or(0) > 0;
}

void HwmonController::tryOut(std::span<Sensor* const> sensors) {
  for (Sensor* const sensor : sensors) sensor->joinTrial(trial_, pass_);
  trial_.supervise();
  for (Sensor* const sensor : sensors) sensor->leaveTrial(pass_);
}

void HwmonController::forgetSensorsWithoutKeys() {
  for (const FoundSensor& found : found_) {
    const auto known = sensors_.find(found.path());
    if (known == sensors_.end() || !found.key.empty()) continue;
    if (known->second.sensor->isFast()) sensors_.erase(known);
  }
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
  const std::optional<double> value = keyedSensors_[entry->index]->read(pass_);
  if (!value && entry->kind == Kind::value) return {.code = kCodeError};
  return floatBytes(static_cast<float>(value.value_or(-1)));
}

SensorInventory HwmonController::inventory() {
  open();
  std::vector<Sensor*> sensors;
  for (const FoundSensor& found : found_) {
    const bool isRead = !found.key.empty() || mayRead(found, options_.driveTemperatures);
    sensors.push_back(isRead ? &findOrAddSensor(found) : nullptr);
  }
  std::vector<Sensor*> readSensors;
  std::remove_copy(sensors.begin(), sensors.end(), std::back_inserter(readSensors), nullptr);
  tryOut(readSensors);
  SensorInventory inventory;
  for (size_t i = 0; i < found_.size(); ++i) {
    inventory.push_back(makeListing(found_[i], sensors[i]));
  }
  forgetSensorsWithoutKeys();
  return inventory;
}

size_t HwmonController::refusedSensors() const {
  return static_cast<size_t>(
      std::count_if(keyedSensors_.begin(), keyedSensors_.end(),
                    [](const Sensor* sensor) { return sensor->isDenied(); }));
}

SensorListing HwmonController::makeListing(const FoundSensor& found, Sensor* sensor) const {
  SensorListing listing{.driver = found.chip->driver,
                        .device = found.chip->device,
                        .file = found.channel->file,
                        .label = found.channel->label,
                        .quantity = std::string(nameOf(found.channel->quantity)),
                        .key = found.key,
                        .reason = found.key.empty() ? found.reason : "",
                        .state = "not read",
                        .raw = ""};
  if (sensor == nullptr) return listing;
  listing.number = sensor->read(pass_);
  listing.state = sensor->state();
  listing.raw = sensor->raw();
  return listing;
}

}  // namespace halvermonte::linuxos
