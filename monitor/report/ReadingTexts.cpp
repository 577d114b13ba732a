#include "monitor/report/ReadingTexts.hpp"

#include <algorithm>
#include <cmath>

namespace halvermonte {
namespace {

bool names(const std::vector<Reading>& readings, Reading::Kind kind, const std::string& name) {
  return std::ranges::any_of(readings, [&](const Reading& reading) {
    return reading.kind == kind && reading.name == name;
  });
}

}  // namespace

std::string temperatureText(int32_t celsius, bool fahrenheit, bool unicode) {
  const auto shown =
      fahrenheit ? std::llround(static_cast<double>(celsius) * 9 / 5 + 32) : int64_t{celsius};
  return std::to_string(shown) + (unicode ? " °" : " ") + (fahrenheit ? "F" : "C");
}

std::string fanText(int32_t speed) {
  return speed == 0 ? "stopped" : std::to_string(speed) + " rpm";
}

std::vector<Temperature> temperatureRows(const std::vector<Reading>& readings) {
  using Kind = Reading::Kind;
  std::vector<Temperature> rows;
  for (const Reading& reading : readings) {
    if (reading.kind == Kind::temperature) {
      rows.push_back({reading.name, reading.value, names(readings, Kind::mini, reading.name)});
    } else if (reading.kind == Kind::mini && !names(readings, Kind::temperature, reading.name)) {
      rows.push_back({reading.name, reading.value, true});
    }
  }
  std::ranges::stable_partition(rows, &Temperature::isMarked);
  return rows;
}

}  // namespace halvermonte
