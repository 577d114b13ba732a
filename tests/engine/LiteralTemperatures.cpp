#include "tests/engine/LiteralTemperatures.hpp"

#include <algorithm>
#include <cmath>

#include "platform/Processor.hpp"

namespace halvermonte::test {
namespace {

int64_t wholeDegrees(double degrees) {
  if (std::isnan(degrees)) return 0;
  return static_cast<int64_t>(std::clamp(std::trunc(degrees), -2147483648.0, 2147483647.0));
}

std::string nameOf(const HIDService& sensor) { return sensor.product.value_or("Unknown"); }
int64_t valueOf(const HIDService& sensor) { return wholeDegrees(sensor.value.value_or(0.0)); }

bool hasPrefix(const std::string& text, const std::string& prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

/// Whether the name stands anywhere in the text that the list's names make.
bool standsIn(const Entries& list, const std::string& name) {
  std::string text;
  for (const auto& entry : list) text += entry.first + '\n';
  return text.find(name) != std::string::npos;
}

void append(Entries& list, const std::string& name, int64_t value) {
  list.emplace_back(name, std::to_string(value));
}

const std::vector<std::pair<std::string, std::string>> kDisplayNames = {
    {"Tg1b", "Power Management Unit"},           {"NAND CH0 temp", "SSD NAND I/O"},
    {"gas gauge battery", "Gas Gauge Battery"},  {"SOC MTR Temp Sensor0", "M1 SOC Sensor 1"},
    {"SOC MTR Temp Sensor1", "M1 SOC Sensor 2"}, {"SOC MTR Temp Sensor2", "M1 SOC Sensor 3"},
    {"ANE MTR Temp Sensor1", "Neural Engine"},   {"ISP MTR Temp Sensor5", "Image Signal Processor"},
};

const std::vector<std::pair<std::string, std::string>> kFixedNames = {
    {"TA0P", "Airflow (Fans)"}, {"TA1P", "Airflow (DC-in)"},
    {"TC0P", "CPU Proximity"},  {"TC0D", "CPU Diode"},
    {"TG0P", "GPU Proximity"},  {"TG0D", "GPU Diode"},
    {"TN0D", "North Bridge"},   {"TM0P", "Memory"},
    {"TB0T", "Battery"},        {"TH0P", "HDD"},
    {"TB0T", "Enclosure"},      {"TB1T", "Enclosure 1"},
    {"TB2T", "Enclosure 2"},    {"TB3T", "Enclosure 3"},
    {"TW0P", "Wi-Fi"},          {"TI0P", "Thunderbolt 0"},
    {"TI1P", "Thunderbolt 1"},
};

/// The name in pieces that compare as people expect: small letters, and digits as a number.
std::vector<std::pair<int64_t, char>> pieces(const std::string& name) {
  std::vector<std::pair<int64_t, char>> all;
  for (size_t i = 0; i < name.size(); ++i) {
    const bool digit = name[i] >= '0' && name[i] <= '9';
    const bool goesOn = digit && i > 0 && name[i - 1] >= '0' && name[i - 1] <= '9';
    if (goesOn) {
      all.back().first = all.back().first * 10 + (name[i] - '0');
    } else if (digit) {
      all.emplace_back(name[i] - '0', '0');
    } else {
      all.emplace_back(1000 + std::tolower(name[i]), 'a');
    }
  }
  return all;
}

}  // namespace

int64_t LiteralTemperatures::clamped(const std::string& sensor, int64_t degrees) {
  const auto earlier = history_.find(sensor);
  if (earlier != history_.end() && degrees - earlier->second <= -26) degrees = earlier->second - 1;
  history_[sensor] = degrees;
  return degrees;
}

void LiteralTemperatures::addGroups(const HIDServices& sensors, Lists& lists, int& budget) {
  const std::vector<std::pair<std::string, std::string>> groups = {
      {"pACC MTR", "CPU Performance Cores"},
      {"eACC MTR", "CPU Efficiency Cores"},
      {"GPU MTR", "GPU Cluster"}};
  for (const auto& [prefix, name] : groups) {
    float sum = 0;
    float count = 0;
    for (const HIDService& sensor : sensors) {
      if (!hasPrefix(nameOf(sensor), prefix)) continue;
      sum += static_cast<float>(valueOf(sensor));
      count += 1.0F;
    }
    if (!(count > 0 && sum > 0)) continue;
    const int64_t average = wholeDegrees(static_cast<double>(roundf(sum / count)));
    append(lists.full, name, average);
    append(lists.mini, name, average);
    budget -= 1;
  }
}

void LiteralTemperatures::addIndividuals(const HIDServices& sensors, Lists& lists, int& budget) {
  for (const HIDService& sensor : sensors) {
    std::string name = nameOf(sensor);
    bool relabelled = false;
    for (const auto& [product, displayName] : kDisplayNames) {
      if (name == product) {
        name = displayName;
        relabelled = true;
      }
    }
    if (hasPrefix(name, "Avg:") || hasPrefix(name, "Min:") || hasPrefix(name, "Max:")) {
      relabelled = false;
    }
    const int64_t value = clamped(name, valueOf(sensor));
    if (!relabelled || value < 0 || value > 110 || standsIn(lists.full, name)) continue;
    append(lists.full, name, value);
    if (budget > 0 && !standsIn(lists.mini, name)) {
      append(lists.mini, name, value);
      budget -= 1;
    }
  }
}

void LiteralTemperatures::addCatalogue(const std::function<double(const std::string&)>& degreesOf,
                                       Lists& lists) {
  std::map<std::string, int64_t> highest;
  std::vector<std::string> order;
  for (const std::string& key : keys_) {
    const double degrees = degreesOf(key);
    if (!names_.contains(key)) continue;
    const std::string& name = names_.at(key);
    const int64_t value = clamped(key, wholeDegrees(degrees));
    if (value < 1 || value > 119) continue;
    if (highest.contains(name) && value <= highest[name]) continue;
    highest[name] = value;
    if (std::find(order.begin(), order.end(), name) == order.end()) order.push_back(name);
  }
  std::sort(order.begin(), order.end(), [](const std::string& first, const std::string& second) {
    return pieces(first) < pieces(second);
  });
  for (const std::string& name : order) append(lists.full, name, highest[name]);
}

LiteralTemperatures::Lists LiteralTemperatures::pass(
    const std::function<double(const std::string&)>& degreesOf, const HIDServices& sensors) {
  Lists lists;
  std::vector<double> fixed;
  for (const auto& [key, name] : kFixedNames) fixed.push_back(degreesOf(key));
  int budget = sensors.size() > 7 ? 7 : static_cast<int>(sensors.size()) - 1;
  addGroups(sensors, lists, budget);
  addIndividuals(sensors, lists, budget);
  addCatalogue(degreesOf, lists);
  for (size_t i = 0; i < fixed.size(); ++i) {
    const int64_t value = wholeDegrees(fixed[i]);
    if (value >= 1 && value <= 109) append(lists.mini, kFixedNames[i].second, value);
  }
  return lists;
}

void LiteralSensors::steady() {
  if (previous_) {
    std::map<std::string, std::string> steadied = sensors_;
    const auto isA = [](const std::string& name, const char* part) {
      return name.find(part) != std::string::npos;
    };
    for (const auto& [name, value] : sensors_) {
      if (!isA(name, "CPU") || !previous_->contains(name)) continue;
      const int64_t before = std::stoll(previous_->at(name));
      if (std::stoll(value) + 5 < before) steadied[name] = std::to_string(before);
    }
    int64_t coolest = 200;
    for (const auto& [name, value] : sensors_) {
      if (isA(name, "GPU")) coolest = std::min<int64_t>(coolest, std::stoll(value));
    }
    for (const auto& [name, value] : sensors_) {
      if (coolest > 199 || !isA(name, "CPU")) continue;
      if (std::stoll(value) + 5 < coolest) steadied[name] = std::to_string(coolest);
    }
    sensors_ = steadied;
  }
  previous_ = sensors_;
}

Entries LiteralSensors::published(const Entries& full) {
  if (!full.empty()) {
    sensors_.clear();
    for (const auto& [name, value] : full) sensors_[name] = value;
  }
  if (kProcessor != Processor::arm64) return full;
  steady();
  Entries published;
  for (const auto& [name, value] : full) published.emplace_back(name, sensors_.at(name));
  return published;
}

}  // namespace halvermonte::test
