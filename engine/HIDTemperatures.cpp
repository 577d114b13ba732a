#include "engine/HIDTemperatures.hpp"

#include <CoreFoundation/CoreFoundation.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "engine/CFConversions.hpp"
#include "halvermonte/Exceptions.hpp"
#include "halvermonte/HIDSensors.h"
#include "platform/CFOwned.hpp"
#include "platform/CFValues.hpp"
#include "platform/Conversions.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

/// The sensors' names at this moment, paired by index with the readings, which come first.
class HIDSensors {
 public:
  explicit HIDSensors(const std::vector<int32_t>& readings)
      : readings_(readings),
        sensors_(matching(kSensorsPage, kTemperatureUsage)),
        names_(getProductNames(sensors_.get())) {}

  CFIndex size() const { return names_ ? CFArrayGetCount(names_.get()) : 0; }

  /// The name, written over what the buffer held.
  void copyName(CFIndex index, std::string& buffer) const {
    copyCharacters(static_cast<CFStringRef>(CFArrayGetValueAtIndex(names_.get(), index)), buffer);
  }

  int32_t degrees(CFIndex index) const {
    if (static_cast<size_t>(index) >= readings_.size()) {
      throw RangeException("index " + std::to_string(index) + " beyond the " +
                           std::to_string(readings_.size()) +
                           " temperatures of the HID event system");
    }
    return readings_[static_cast<size_t>(index)];
  }

 private:
  const std::vector<int32_t>& readings_;
  CFOwned<CFDictionaryRef> sensors_;
  CFOwned<CFMutableArrayRef> names_;
};

/// Sensors that are listed as one average, whatever they read, in this order.
struct Group {
  std::string_view prefix;
  std::string_view name;
};
constexpr std::array<Group, 3> kGroups = {{
    {"pACC MTR", "CPU Performance Cores"},
    {"eACC MTR", "CPU Efficiency Cores"},
    {"GPU MTR", "GPU Cluster"},
}};

/// A group's members so far, in 32-bit floats, because their average is one.
struct Members {
  float sum = 0;
  float count = 0;

  void add(int32_t degrees) {
    sum += static_cast<float>(degrees);
    count += 1.0F;
  }
};

/// How many entries of this source the mini list may still take.
int32_t miniBudget(CFIndex sensors) { return sensors > 7 ? 7 : static_cast<int32_t>(sensors) - 1; }

void addGroups(const HIDSensors& sensors, TemperatureLists& lists, int32_t& budget) {
  std::array<Members, kGroups.size()> members;
  std::string name;
  for (CFIndex i = 0; i < sensors.size(); ++i) {
    sensors.copyName(i, name);
    const int32_t degrees = sensors.degrees(i);
    for (size_t group = 0; group < kGroups.size(); ++group) {
      if (name.starts_with(kGroups[group].prefix)) members[group].add(degrees);
    }
  }
  for (size_t group = 0; group < kGroups.size(); ++group) {
    const auto [sum, count] = members[group];
    if (count <= 0 || sum <= 0) continue;
    const auto average = truncated<int32_t>(std::round(sum / count));
    lists.full.append(kGroups[group].name, average);
    lists.mini.append(kGroups[group].name, average);
    --budget;  // below zero too
  }
}

struct Relabel {
  std::string_view product;
  std::string_view name;
};
constexpr Relabel kRelabels[] = {
    {"Tg1b", "Power Management Unit"},           {"NAND CH0 temp", "SSD NAND I/O"},
    {"gas gauge battery", "Gas Gauge Battery"},  {"SOC MTR Temp Sensor0", "M1 SOC Sensor 1"},
    {"SOC MTR Temp Sensor1", "M1 SOC Sensor 2"}, {"SOC MTR Temp Sensor2", "M1 SOC Sensor 3"},
    {"ANE MTR Temp Sensor1", "Neural Engine"},   {"ISP MTR Temp Sensor5", "Image Signal Processor"},
};

/// The product's display name; empty for one without.
std::string_view labelOf(std::string_view product) {
  for (const Relabel& row : kRelabels) {
    if (product == row.product) return row.name;
  }
  return {};
}

/// Gives a known product its display name. Returns false for any other, which is never listed by
/// itself.
bool relabel(std::string& name) {
  const std::string_view label = labelOf(name);
  const bool relabelled = !label.empty();
  if (relabelled) name = label;
  // No row of today has such a name; one that does would be a summary of other sensors.
  const bool summary =
      name.starts_with("Avg:") || name.starts_with("Min:") || name.starts_with("Max:");
  return relabelled && !summary;
}

void addIndividuals(const HIDSensors& sensors, SensorsHistory& history, TemperatureLists& lists,
                    int32_t& budget) {
  std::string name;
  for (CFIndex i = 0; i < sensors.size(); ++i) {
    sensors.copyName(i, name);
    const bool relabelled = relabel(name);
    const int32_t degrees = history.clamped(name, sensors.degrees(i));
    const bool accepted = relabelled && degrees >= 0 && degrees <= 110;
    if (!accepted || lists.full.mentions(name)) continue;
    lists.full.append(name, degrees);
    if (budget <= 0 || lists.mini.mentions(name)) continue;
    lists.mini.append(name, degrees);
    --budget;
  }
}

}  // namespace

std::vector<int32_t> readHIDTemperatures() {
  const CFOwned sensors(matching(kSensorsPage, kTemperatureUsage));
  const CFOwned readings(getThermalValues(sensors.get()));
  const CFIndex count = CFArrayGetCount(readings.get());
  std::vector<int32_t> degrees;
  degrees.reserve(static_cast<size_t>(count));
  for (CFIndex i = 0; i < count; ++i) {
    const void* const reading = CFArrayGetValueAtIndex(readings.get(), i);
    degrees.push_back(truncated<int32_t>(doubleOf(static_cast<CFNumberRef>(reading))));
  }
  return degrees;
}

void addHIDTemperatures(const std::vector<int32_t>& readings, SensorsHistory& history,
                        TemperatureLists& lists) {
  const HIDSensors sensors(readings);
  int32_t budget = miniBudget(sensors.size());
  addGroups(sensors, lists, budget);
  addIndividuals(sensors, history, lists, budget);
}

std::string_view hidDisplayName(std::string_view product) {
  if (const std::string_view label = labelOf(product); !label.empty()) return label;
  for (const Group& group : kGroups) {
    if (product.starts_with(group.prefix)) return group.name;
  }
  return {};
}

}  // namespace halvermonte
