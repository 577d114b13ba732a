#include "platform/linux/hwmon/TemperatureNames.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "platform/linux/Text.hpp"
#include "platform/linux/hwmon/DeviceFacts.hpp"
#include "platform/linux/hwmon/NameTable.hpp"
#include "platform/linux/hwmon/NameWords.hpp"
#include "platform/linux/hwmon/ProcessorPlaces.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr size_t kLongestName = 40;
constexpr size_t kLeastOfSubject = 11;
constexpr size_t kLongestPlace = 17;  // leaves room for that and a sensor such as "Sensor 1"

std::string joined(const std::string& first, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + " " + second;
}

/// The words that fit, or as many characters of the first one.
std::string cut(std::string_view text, size_t length) {
  if (text.size() <= length) return std::string(text);
  const size_t end = text.rfind(' ', length);
  return std::string(trimmed(text.substr(0, end == text.npos || end == 0 ? length : end)));
}

const NameRow* rowFor(const Chip& chip, const Channel& channel) {
  const auto rows = nameRows();
  const std::string_view label = labelOrName(channel);
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const NameRow& each) {
    return matches(each.driver, chip.kind) && matches(each.label, label);
  });
  return row == rows.end() ? nullptr : &*row;
}

/// The module's number, counted from 1: its address on the bus.
std::string memorySlot(const Chip& chip) {
  constexpr int kSlots = 8;
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::string_view address = chip.stablePath;
  const size_t last = kDigits.find(address.empty() ? ' ' : address.back());
  return last == kDigits.npos ? "" : std::to_string(static_cast<int>(last) % kSlots + 1);
}

/// "Memory" for the first bus of its parent that can have memory modules, then "Memory 2".
std::string memoryBus(const Chip& chip) {
  const size_t start = chip.stablePath.rfind("i2c-");
  if (start == std::string::npos) return "Memory";
  const std::string_view rank = std::string_view(chip.stablePath).substr(start + 4);
  const int64_t number = integer(rank.substr(0, rank.find('/'))).value_or(0);
  return number == 0 ? "Memory" : "Memory " + std::to_string(number + 1);
}

std::string wordsOrNumber(const Channel& channel) {
  std::string text = wordsOfLabel(channel.label);
  return text.empty() ? "Sensor " + std::to_string(channel.number) : text;
}

}  // namespace

/// Replaces the words in braces.
class TemperatureNames::Words {
 public:
  Words(const TemperatureNames& names, const Chip& chip, const Channel& channel)
      : names_(names), chip_(chip), channel_(channel) {}

  std::string replace(std::string_view pattern) const {
    std::string text;
    for (;;) {
      const size_t open = pattern.find('{');
      text += pattern.substr(0, open);
      if (open == pattern.npos) return text;
      const size_t close = pattern.find('}', open);
      text += meaningOf(pattern.substr(open + 1, close - open - 1));
      pattern.remove_prefix(close + 1);
    }
  }

 private:
  std::string meaningOf(std::string_view word) const {
    const ProcessorPlaces places(names_.topology_, names_.chips_, chip_);
    if (word == "cpu") return places.processor();
    if (word == "socket") return places.socket();
    if (word == "core") return places.core(channel_);
    if (word == "die") return places.die();
    if (word == "die or control") return hasLabel("Tdie") ? "Control" : places.die();
    if (word == "gpu") return isIntegratedGraphics(names_.calls_, chip_) ? "Integrated GPU" : "GPU";
    if (word == "memory") return memoryBus(chip_);
    if (word == "slot") return memorySlot(chip_);
    if (word == "model") return driveModel(names_.calls_, chip_);
    if (word == "zone") return wordsOfZone(chip_.kind);
    if (word == "n") return numberOf(channel_);
    if (word == "chip") return chip_.label.empty() ? printableWords(chip_.kind) : chip_.label;
    return wordsOrNumber(channel_);
  }

  static std::string numberOf(const Channel& channel) {
    const std::string number = numberAtEnd(trimmed(channel.label));
    return number.empty() ? std::to_string(channel.number) : number;
  }

  bool hasLabel(std::string_view label) const {
    return std::any_of(chip_.channels.begin(), chip_.channels.end(),
                       [&](const Channel& each) { return trimmed(each.label) == label; });
  }

  const TemperatureNames& names_;
  const Chip& chip_;
  const Channel& channel_;
};

namespace {

using Temperatures = std::vector<NamedTemperature>;

std::map<std::string, std::vector<NamedTemperature*>> byName(Temperatures& temperatures) {
  std::map<std::string, std::vector<NamedTemperature*>> groups;
  for (NamedTemperature& each : temperatures) groups[each.name()].push_back(&each);
  return groups;
}

/// Numbers the equal names within each chip: "Dell Other 1", "Dell Other 2".
void numberWithinChips(Temperatures& temperatures) {
  std::map<std::pair<const Chip*, std::string>, std::vector<NamedTemperature*>> groups;
  for (NamedTemperature& each : temperatures) {
    groups[{each.chip, each.name()}].push_back(&each);
  }
  for (const auto& [place, group] : groups) {
    if (group.size() < 2) continue;
    for (size_t i = 0; i < group.size(); ++i) {
      group[i]->sensor = joined(group[i]->sensor, std::to_string(i + 1));
    }
  }
}

/// Whether a device's sensors have to show its place, and so by which subject.
using DevicesInNeed = std::set<std::pair<const Chip*, std::string>>;

DevicesInNeed devicesWithSharedNames(Temperatures& temperatures) {
  DevicesInNeed devices;
  for (const auto& [name, group] : byName(temperatures)) {
    if (group.size() < 2) continue;
    for (const NamedTemperature* const each : group) devices.insert({each->chip, each->subject});
  }
  return devices;
}

}  // namespace

std::string NamedTemperature::name() const {
  const std::string end = place.empty() ? "" : " (" + place + ")";
  const size_t room = kLongestName - end.size();
  const size_t least = std::min(subject.size(), kLeastOfSubject);
  const std::string rest = cut(sensor, room - least - 1);
  const std::string start = cut(subject, rest.empty() ? room : room - rest.size() - 1);
  return joined(start, rest) + end;
}

TemperatureNames::TemperatureNames(SystemCalls& calls, const std::string& sys,
                                   const std::vector<Chip>& chips)
    : calls_(calls), sys_(sys), chips_(chips), topology_(calls, sys) {}

bool TemperatureNames::describe(NamedTemperature& temperature) const {
  const NameRow* const row = rowFor(*temperature.chip, *temperature.channel);
  if (row == nullptr || row->name.empty()) return false;
  const Words words(*this, *temperature.chip, *temperature.channel);
  const size_t bar = std::min(row->name.find('|'), row->name.size());
  temperature.subject = squeezed(words.replace(row->name.substr(0, bar)));
  temperature.sensor =
      squeezed(words.replace(row->name.substr(std::min(bar + 1, row->name.size()))));
  return true;
}

bool TemperatureNames::mayBeBuiltIn(const NamedTemperature& temperature) const {
  return matches(kProcessors, temperature.chip->kind) &&
         ProcessorPlaces(topology_, chips_, *temperature.chip).isFirstDie();
}

void TemperatureNames::separate(std::vector<NamedTemperature>& temperatures) const {
  numberWithinChips(temperatures);
  const DevicesInNeed devices = devicesWithSharedNames(temperatures);
  for (NamedTemperature& each : temperatures) {
    if (!devices.contains({each.chip, each.subject})) continue;
    each.place = placeOf(calls_, sys_, *each.chip);
    if (each.place.size() > kLongestPlace) each.place = each.key;
  }
  for (const auto& [name, group] : byName(temperatures)) {
    if (group.size() < 2) continue;
    for (NamedTemperature* const each : group) each->place = each->key;
  }
}

}  // namespace halvermonte::linuxos
