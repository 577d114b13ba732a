#include "halvermonte/Readings.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <system_error>

#include "halvermonte/Values.hpp"

namespace halvermonte {
namespace {

/// The lines that end with a line feed, so that "n/a" is not one.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

std::optional<int32_t> wholeNumber(std::string_view digits) {
  int32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

/// A line without a partner in the other text, or without a number, is left out.
std::vector<Reading> paired(const Text& names, const Text& numbers, Unit unit) {
  const auto nameLines = linesOf(names.view()), numberLines = linesOf(numbers.view());
  std::vector<Reading> readings;
  for (size_t i = 0; i < std::min(nameLines.size(), numberLines.size()); ++i) {
    const std::optional<int32_t> number = wholeNumber(numberLines[i]);
    if (number) readings.push_back({std::string(nameLines[i]), *number, unit});
  }
  return readings;
}

}  // namespace

std::string_view symbolOf(Unit unit) { return unit == Unit::degreesCelsius ? "°C" : "rpm"; }

std::vector<Reading> temperatures(const SensorsRecord& record) {
  return paired(record.sensors_temperature(), record.sensors_temperatureData(),
                Unit::degreesCelsius);
}

std::vector<Reading> shortTemperatures(const SensorsRecord& record) {
  return paired(record.sensors_temperatureMini(), record.sensors_temperatureMiniData(),
                Unit::degreesCelsius);
}

std::vector<Reading> fans(const SensorsRecord& record) {
  return paired(record.sensors_fans(), record.sensors_fansData(), Unit::revolutionsPerMinute);
}

}  // namespace halvermonte
