#include "monitor/Readings.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace halvermonte {

namespace {

// The lines that are ended by a line feed: "n/a" is none.
std::vector<std::string> linesOf(const Text& text) {
  std::vector<std::string> lines;
  std::string_view rest = text.view();
  for (size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1)) {
    lines.emplace_back(rest.substr(0, end));
  }
  return lines;
}

std::vector<Reading> pairedReadings(const Text& names, const Text& values) {
  const std::vector<std::string> nameLines = linesOf(names), valueLines = linesOf(values);
  std::vector<Reading> readings;
  for (size_t i = 0; i < std::min(nameLines.size(), valueLines.size()); ++i) {
    readings.push_back({nameLines[i], valueLines[i]});
  }
  return readings;
}

bool names(const std::vector<Reading>& readings, const std::string& name) {
  return std::any_of(readings.begin(), readings.end(),
                     [&name](const Reading& reading) { return reading.name == name; });
}

}  // namespace

std::vector<Reading> temperatureReadings(const StatisticsData& record) {
  const std::vector<Reading> full =
      pairedReadings(record.sensors_temperature(), record.sensors_temperatureData());
  const std::vector<Reading> brief =
      pairedReadings(record.sensors_temperatureMini(), record.sensors_temperatureMiniData());
  std::vector<Reading> readings = full;
  for (Reading& reading : readings) reading.isMarked = names(brief, reading.name);
  for (const Reading& reading : brief) {
    if (!names(full, reading.name)) readings.push_back({reading.name, reading.value, true});
  }
  std::stable_partition(readings.begin(), readings.end(),
                        [](const Reading& reading) { return reading.isMarked; });
  return readings;
}

std::vector<Reading> fanReadings(const StatisticsData& record) {
  return pairedReadings(record.sensors_fans(), record.sensors_fansData());
}

std::optional<int64_t> wholeNumber(std::string_view digits) {
  int64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

std::string temperatureText(std::string_view celsius, bool fahrenheit, bool unicode) {
  const std::optional<int64_t> degrees = wholeNumber(celsius);
  if (!degrees) return std::string(celsius);
  const auto shown =
      fahrenheit ? std::llround(static_cast<double>(*degrees) * 9 / 5 + 32) : *degrees;
  return std::to_string(shown) + (unicode ? " °" : " ") + (fahrenheit ? "F" : "C");
}

std::string fanText(std::string_view speed) {
  return speed == "0" ? "stopped" : std::string(speed) + " rpm";
}

}  // namespace halvermonte
