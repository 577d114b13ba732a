#include "monitor/Readings.hpp"

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

/// Lines without a partner in the other text are left out.
void append(std::vector<Reading>& readings, Reading::Kind kind, const Text& names,
            const Text& values) {
  const auto nameLines = linesOf(names.view()), valueLines = linesOf(values.view());
  for (size_t i = 0; i < std::min(nameLines.size(), valueLines.size()); ++i) {
    const std::optional<int32_t> value = wholeNumber(valueLines[i]);
    if (value) readings.push_back({kind, std::string(nameLines[i]), *value});
  }
}

}  // namespace

std::string_view unitOf(Reading::Kind kind) { return kind == Reading::Kind::fan ? "rpm" : "°C"; }

std::vector<Reading> readingsOf(const StatisticsData& record) {
  using Kind = Reading::Kind;
  std::vector<Reading> readings;
  append(readings, Kind::temperature, record.sensors_temperature(),
         record.sensors_temperatureData());
  append(readings, Kind::mini, record.sensors_temperatureMini(),
         record.sensors_temperatureMiniData());
  append(readings, Kind::fan, record.sensors_fans(), record.sensors_fansData());
  return readings;
}

}  // namespace halvermonte
