#include "platform/linux/hwmon/KeyAssignment.hpp"

#include <algorithm>
#include <functional>
#include <set>
#include <string_view>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

bool isTemperature(const Channel& channel) { return channel.quantity == Quantity::temperature; }

std::string_view labelOrName(const Channel& channel) {
  const std::string_view label = trimmed(channel.label);
  return label.empty() ? std::string_view(channel.name) : label;
}

bool isKey(std::string_view text) {
  return text.size() == 4 &&
         std::all_of(text.begin(), text.end(), [](char each) { return each > ' ' && each <= '~'; });
}

/// The first of the row's labels that the chip has. "" if it has none of them.
std::string_view firstPresentLabel(const KeyRow& row, const Chip& chip) {
  for (const std::string_view label : split(row.label, '|')) {
    for (const Channel& channel : chip.channels) {
      if (isTemperature(channel) && matches(label, labelOrName(channel))) return label;
    }
  }
  return {};
}

std::string firstReason(const FoundSensor& sensor, const AssignmentFacts& facts) {
  if (!mayRead(sensor, facts.driveTemperatures)) return "read only on request";
  return isTemperature(*sensor.channel) ? "the catalogue has no name for it"
                                        : "only temperatures and fans are shown";
}

/// Goes through the table, and remembers which keys are taken.
class Assigner {
 public:
  Assigner(std::vector<FoundSensor>& sensors, const AssignmentFacts& facts)
      : sensors_(sensors), facts_(facts) {}

  void run() {
    for (FoundSensor& sensor : sensors_) sensor.reason = firstReason(sensor, facts_);
    for (const KeyRow& row : keyRows()) apply(row);
    for (FoundSensor& sensor : sensors_) yieldToController(sensor);
  }

 private:
  void apply(const KeyRow& row) {
    const std::vector<const Chip*> chips = chipsOf(row);
    for (FoundSensor& sensor : sensors_) {
      const auto chip = std::find(chips.begin(), chips.end(), sensor.chip);
      if (chip == chips.end() || !sensor.key.empty()) continue;
      if (row.keys == kLabelIsKey || row.keys == kKeyInDeviceTree) {
        assignControllerKey(sensor, row);
      } else if (isTemperature(*sensor.channel) && checkLabel(sensor, row)) {
        const auto place = static_cast<size_t>(chip - chips.begin());
        assignTableKey(sensor, row, place, chips.size());
      }
    }
  }

  std::vector<const Chip*> chipsOf(const KeyRow& row) const {
    std::vector<const Chip*> chips;
    for (const FoundSensor& sensor : sensors_) {
      const bool isKnown = !chips.empty() && chips.back() == sensor.chip;
      if (isKnown || !mayRead(sensor, facts_.driveTemperatures)) continue;
      if (matches(row.driver, sensor.chip->driver)) chips.push_back(sensor.chip);
    }
    return chips;
  }

  static bool checkLabel(FoundSensor& sensor, const KeyRow& row) {
    const std::string_view text = labelOrName(*sensor.channel);
    if (!matches(row.label, text)) return false;
    const std::string_view label = firstPresentLabel(row, *sensor.chip);
    if (matches(label, text)) return true;
    sensor.reason = std::string(label) + " is shown instead";
    return false;
  }

  void assignControllerKey(FoundSensor& sensor, const KeyRow& row) {
    if (sensor.channel->quantity == Quantity::fan) return;
    const bool isLabel = row.keys == kLabelIsKey;
    const std::string key = isLabel ? std::string(trimmed(sensor.channel->label))
                                    : keyOf(facts_.deviceTree, *sensor.chip, *sensor.channel);
    if (isKey(key) && controllerKeys_.insert(key).second) {
      setKey(sensor, row, key);
    } else {
      sensor.reason = isLabel ? "its label is not a key" : "the device tree has no key for it";
    }
  }

  void assignTableKey(FoundSensor& sensor, const KeyRow& row, size_t chip, size_t chips) {
    const std::vector<std::string_view> keys = words(row.keys);
    const bool isSpread = row.spread == Spread::each;
    const size_t first = isSpread ? 0 : packageOf(chip, chips);
    const size_t end = isSpread ? keys.size() : std::min(first + 1, keys.size());
    for (size_t i = first; i < end; ++i) {
      if (!tableKeys_.insert(std::string(keys[i])).second) continue;
      setKey(sensor, row, std::string(keys[i]));
      return;
    }
    sensor.reason = "the catalogue has no more names for its kind";
  }

  /// Some processors have more than one chip in a package.
  size_t packageOf(size_t chip, size_t chips) const {
    const bool isSplit = facts_.packages > 0 && facts_.packages < chips;
    return isSplit ? chip * facts_.packages / chips : chip;
  }

  static void setKey(FoundSensor& sensor, const KeyRow& row, const std::string& key) {
    sensor.key = key;
    sensor.lowest = row.lowest;
    sensor.highest = row.highest;
  }

  void yieldToController(FoundSensor& sensor) const {
    const bool isBoth = tableKeys_.contains(sensor.key) && controllerKeys_.contains(sensor.key);
    if (!isBoth || isOfController(sensor)) return;
    sensor.reason = "the controller has " + sensor.key + " itself";
    sensor.key.clear();
  }

  std::vector<FoundSensor>& sensors_;
  const AssignmentFacts& facts_;
  std::set<std::string, std::less<>> controllerKeys_;  ///< taken by a Mac's controller
  std::set<std::string, std::less<>> tableKeys_;       ///< taken by rows of the table
};

}  // namespace

bool isOfController(const FoundSensor& sensor) {
  return matches(kControllers, sensor.chip->driver);
}

std::vector<FoundSensor> sensorsOf(const std::vector<Chip>& chips) {
  std::vector<FoundSensor> sensors;
  for (const Chip& chip : chips) {
    for (const Channel& channel : chip.channels) sensors.push_back({&chip, &channel});
  }
  return sensors;
}

ReadPolicy readPolicyOf(const FoundSensor& sensor) {
  for (const ReadPolicyRow& row : readPolicyRows()) {
    if (matches(row.driver, sensor.chip->driver)) return row.policy;
  }
  return ReadPolicy::everyPass;
}

bool mayRead(const FoundSensor& sensor, bool driveTemperatures) {
  return driveTemperatures || readPolicyOf(sensor) != ReadPolicy::onRequest;
}

void assignKeys(std::vector<FoundSensor>& sensors, const AssignmentFacts& facts) {
  Assigner(sensors, facts).run();
}

}  // namespace halvermonte::linuxos
