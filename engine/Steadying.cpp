#include "engine/Steadying.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvermonte {
namespace {

/// The integer that the text begins with, blanks skipped; 0 without one. Saturates.
int64_t integerOf(const Value& value) {
  const Text whole = value.asText();
  std::string_view text = whole.view();
  const size_t start = text.find_first_not_of(" \t\n\r\v\f");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const uint64_t limit = uint64_t{std::numeric_limits<int64_t>::max()} + (negative ? 1 : 0);
  uint64_t magnitude = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    const auto digit = static_cast<uint64_t>(c - '0');
    magnitude = magnitude > (limit - digit) / 10 ? limit : magnitude * 10 + digit;
  }
  return static_cast<int64_t>(negative ? 0 - magnitude : magnitude);
}

/// True if the value is more than 5 degrees below the other.
bool isWellBelow(int64_t value, int64_t other) {
  if (value >= other) return false;
  return static_cast<uint64_t>(other) - static_cast<uint64_t>(value) > 5;
}

bool mentions(const Dictionary::Entry& entry, std::string_view part) {
  return entry.key.view().find(part) != std::string_view::npos;
}

/// The coolest GPU below 200 degrees; absent if there is none.
std::optional<int64_t> coolestGPU(const Dictionary& sensors) {
  int64_t coolest = 200;
  for (const Dictionary::Entry& entry : sensors) {
    if (mentions(entry, "GPU")) coolest = std::min(coolest, integerOf(entry.value));
  }
  return coolest <= 199 ? std::optional(coolest) : std::nullopt;
}

/// A CPU that fell by more than 5 degrees is held at its previous value; one more than 5 degrees
/// below the coolest GPU is lifted to that, which wins.
Dictionary steadied(const Dictionary& sensors, const Dictionary& previous) {
  if (!sensors) return {};
  const std::optional<int64_t> gpu = coolestGPU(sensors);
  std::vector<Dictionary::Entry> entries = sensors.entries();
  for (Dictionary::Entry& entry : entries) {
    if (!mentions(entry, "CPU")) continue;
    const int64_t current = integerOf(entry.value);
    const Value before = previous.find(entry.key.view());
    if (gpu && isWellBelow(current, *gpu)) {
      entry.value = Text(std::to_string(*gpu));
    } else if (before && isWellBelow(current, integerOf(before))) {
      entry.value = Text(std::to_string(integerOf(before)));
    }
  }
  return Dictionary(std::move(entries));
}

/// Writes the full list again from the published values. Names without a value drop out.
void rewriteTexts(SensorsRecord& record, const Dictionary& sensors) {
  std::string names;
  std::string values;
  for (const Text& name : record.sensors_temperature().split('\n')) {
    const Value value = sensors.find(name.view());
    if (!value) continue;
    const Text degrees = value.asText();
    names.append(name.view()) += '\n';
    values.append(degrees.view()) += '\n';
  }
  record.setSensors_temperature(Text(names));
  record.setSensors_temperatureData(Text(values));
}

}  // namespace

void steadyProcessors(SensorsRecord& record, Dictionary& previous) {
  if (previous) record.setSensors(steadied(record.sensors(), previous));
  previous = record.sensors();
  rewriteTexts(record, previous);
}

}  // namespace halvermonte
