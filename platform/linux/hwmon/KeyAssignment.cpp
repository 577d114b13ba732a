#include "platform/linux/hwmon/KeyAssignment.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "catalogue/Tables.hpp"
#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/NameWords.hpp"
#include "platform/linux/hwmon/TemperatureNames.hpp"

namespace halvermonte::linuxos {
namespace {

bool isTemperature(const Channel& channel) { return channel.quantity == Quantity::temperature; }

bool isKey(std::string_view text) {
  return text.size() == 4 &&
         std::all_of(text.begin(), text.end(), [](char each) { return each > ' ' && each <= '~'; });
}

bool isLabelUnique(const Chip& chip, const Channel& channel) {
  const std::string_view label = trimmed(channel.label);
  return !label.empty() &&
         std::count_if(chip.channels.begin(), chip.channels.end(), [&](const Channel& other) {
           return other.quantity == channel.quantity && trimmed(other.label) == label;
         }) == 1;
}

/// Numbers of channels may change with a kernel, labels stay.
std::string identityOf(const Chip& chip, const Channel& channel) {
  const std::string_view place =
      isLabelUnique(chip, channel) ? trimmed(channel.label) : std::string_view(channel.name);
  return chip.kind + " " + chip.stablePath + " " + std::string(nameOf(channel.quantity)) + " " +
         std::string(place);
}

/// Devices that nothing tells apart, such as zones of one type, are numbered as they are found.
void setIdentities(std::vector<FoundSensor>& sensors) {
  std::map<std::string, int> counts;
  for (FoundSensor& sensor : sensors) {
    sensor.identity = identityOf(*sensor.chip, *sensor.channel);
    const int count = ++counts[sensor.identity];
    if (count > 1) sensor.identity += " #" + std::to_string(count);
  }
}

/// Four letters and digits. The first one is not a capital, as those of the built-in keys and of a
/// Mac's controller are. The text alone decides: keys must not change from release to release.
std::string hashedKey(std::string_view text) {
  constexpr std::string_view kCharacters =
      "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  constexpr size_t kFirstCharacters = 36;
  uint64_t hash = 0xcbf29ce484222325;  // FNV-1a
  for (const char each : text) hash = (hash ^ static_cast<unsigned char>(each)) * 0x100000001b3;
  hash ^= hash >> 32;
  std::string key(1, kCharacters[hash % kFirstCharacters]);
  hash /= kFirstCharacters;
  for (int i = 0; i < 3; ++i, hash /= kCharacters.size()) {
    key += kCharacters[hash % kCharacters.size()];
  }
  return key;
}

/// Gives keys and names to the temperatures that may be read.
class Assigner {
 public:
  Assigner(SystemCalls& calls, const std::vector<Chip>& chips, const AssignmentFacts& facts)
      : facts_(facts), names_(calls, facts.sys, chips) {
    for (const NamedKey& row : facts.builtInNames) builtInNames_[row.key] = row.name;
    hasKernelCores_ = std::any_of(chips.begin(), chips.end(), [](const Chip& chip) {
      return matches("coretemp", chip.kind) &&
             std::any_of(chip.channels.begin(), chip.channels.end(), [](const Channel& channel) {
               return matches("Core *", trimmed(channel.label));
             });
    });
  }

  void run(std::vector<FoundSensor>& sensors) {
    std::vector<FoundSensor*> shown;
    for (FoundSensor& sensor : sensors) {
      if (accepts(sensor)) shown.push_back(&sensor);
    }
    for (NamedTemperature& temperature : temperatures_) addBuiltInKey(temperature);
    addKeys(shown);
    names_.separate(temperatures_);
    for (size_t i = 0; i < shown.size(); ++i) finish(*shown[i], temperatures_[i]);
  }

 private:
  bool accepts(FoundSensor& sensor) {
    if (!isTemperature(*sensor.channel)) {
      sensor.reason = "only temperatures and fans are shown";
      if (isOfController(sensor)) keepControllerKey(sensor);
      return false;
    }
    if (!mayRead(sensor, facts_.driveTemperatures)) {
      sensor.reason = "read only on request";
      return false;
    }
    NamedTemperature temperature{.chip = sensor.chip, .channel = sensor.channel, .key = ""};
    if (!names_.describe(temperature)) {
      sensor.reason = "a limit, not a reading";
      return false;
    }
    if (isOfController(sensor)) describeOfController(sensor, temperature);
    temperatures_.push_back(std::move(temperature));
    return true;
  }

  /// Programs may ask for the controller's keys, shown or not.
  void keepControllerKey(FoundSensor& sensor) {
    const bool isFan = sensor.channel->quantity == Quantity::fan;
    const std::string key = isFan ? "" : controllerKeyOf(sensor);
    if (!key.empty() && keys_.insert(key).second) sensor.key = key;
  }

  /// A controller's own key is used if the engine would show it under a name of its own, or does
  /// not know it at all.
  void describeOfController(FoundSensor& sensor, NamedTemperature& temperature) {
    const std::string key = controllerKeyOf(sensor);
    const std::string label =
        sensor.chip->kind == "applesmc" ? "" : wordsOfLabel(sensor.channel->label);
    temperature.subject =
        label.empty() ? "SMC " + (key.empty() ? sensor.channel->name : key) : label;
    const auto builtIn = builtInNames_.find(key);
    const bool isNamed = builtIn != builtInNames_.end();
    if (!isNamed || !isBuiltInTemperatureKey(key)) {
      if (isNamed) temperature.subject = builtIn->second;
      // A pass would leave a built-in key out that has no name or is in no list.
      if (!key.empty() && keys_.insert(key).second)
        (isBuiltInKey(key) ? sensor.alias : temperature.key) = key;
      return;
    }
    // A Mac's cores come from one source.
    if (hasKernelCores_ && builtIn->second.starts_with("CPU Core ")) return;
    // The engine shows one reading for each name.
    if (!takenNames_.insert(builtIn->second).second) return;
    temperature = {.chip = sensor.chip,
                   .channel = sensor.channel,
                   .key = key,
                   .subject = std::string(builtIn->second),
                   .isFixed = true};
  }

  std::string controllerKeyOf(const FoundSensor& sensor) const {
    const std::string key = sensor.chip->kind == "applesmc"
                                ? std::string(trimmed(sensor.channel->label))
                                : keyOf(facts_.deviceTree, *sensor.chip, *sensor.channel);
    return isKey(key) ? key : "";
  }

  /// A processor's sensor has the built-in key of its name, unless the controller has that itself.
  void addBuiltInKey(NamedTemperature& temperature) {
    if (!temperature.key.empty() || !names_.mayBeBuiltIn(temperature)) return;
    for (const BuiltInKeyRow& row : builtInKeyRows()) {
      if (row.isAlias || row.name != temperature.name()) continue;
      if (!takenNames_.insert(row.name).second) return;
      temperature.key = row.key;
      temperature.isFixed = true;
    }
  }

  /// Adds the keys that sensors do not have of their own. Their order is that of the identities, so
  /// that the rare two with one hash keep theirs.
  void addKeys(const std::vector<FoundSensor*>& shown) {
    std::map<std::string_view, NamedTemperature*> byIdentity;
    for (size_t i = 0; i < shown.size(); ++i) {
      if (temperatures_[i].key.empty()) byIdentity[shown[i]->identity] = &temperatures_[i];
    }
    for (const auto& [identity, temperature] : byIdentity) {
      std::string text(identity);
      do {
        temperature->key = hashedKey(text);
        text += '+';
      } while (!keys_.insert(temperature->key).second);
    }
  }

  void finish(FoundSensor& sensor, const NamedTemperature& temperature) const {
    sensor.key = temperature.key;
    sensor.name = temperature.name();
    sensor.isBuiltIn = temperature.isFixed;
    if (temperature.isFixed) return;
    for (const BuiltInKeyRow& row : builtInKeyRows()) {
      if (row.isAlias && row.name == sensor.name) sensor.alias = row.key;
    }
  }

  const AssignmentFacts& facts_;
  TemperatureNames names_;
  std::map<std::string_view, std::string_view> builtInNames_;
  bool hasKernelCores_ = false;
  std::vector<NamedTemperature> temperatures_;
  std::set<std::string> keys_;             ///< given so far, without those that a pass reads
  std::set<std::string_view> takenNames_;  ///< by built-in keys
};

}  // namespace

bool isOfController(const FoundSensor& sensor) { return matches(kControllers, sensor.chip->kind); }

std::vector<FoundSensor> sensorsOf(const std::vector<Chip>& chips) {
  std::vector<FoundSensor> sensors;
  for (const Chip& chip : chips) {
    for (const Channel& channel : chip.channels) sensors.push_back({&chip, &channel});
  }
  setIdentities(sensors);
  return sensors;
}

ReadPolicy readPolicyOf(const FoundSensor& sensor) {
  for (const ReadPolicyRow& row : readPolicyRows()) {
    if (matches(row.driver, sensor.chip->kind)) return row.policy;
  }
  return ReadPolicy::everyPass;
}

bool mayRead(const FoundSensor& sensor, bool driveTemperatures) {
  return driveTemperatures || readPolicyOf(sensor) != ReadPolicy::onRequest;
}

void assignKeys(SystemCalls& calls, const std::vector<Chip>& chips,
                std::vector<FoundSensor>& sensors, const AssignmentFacts& facts) {
  Assigner(calls, chips, facts).run(sensors);
}

}  // namespace halvermonte::linuxos
