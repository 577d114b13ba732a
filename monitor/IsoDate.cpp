#include "monitor/IsoDate.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace halvermonte {

std::string isoDate(double secondsSince1970) {
  namespace chrono = std::chrono;
  constexpr double kFirst = -62167219200e3, kLast = 253402300799999;
  if (std::isnan(secondsSince1970)) return "";
  const double milliseconds = std::clamp(std::round(secondsSince1970 * 1e3), kFirst, kLast);
  const chrono::sys_time<chrono::milliseconds> time(
      chrono::milliseconds(static_cast<int64_t>(milliseconds)));
  const auto midnight = chrono::floor<chrono::days>(time);
  const chrono::year_month_day day(midnight);
  const auto sinceMidnight = static_cast<int>((time - midnight).count());
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(day.year()),
                unsigned(day.month()), unsigned(day.day()), sinceMidnight / 3600000,
                sinceMidnight / 60000 % 60, sinceMidnight / 1000 % 60, sinceMidnight % 1000);
  return text;
}

}  // namespace halvermonte
