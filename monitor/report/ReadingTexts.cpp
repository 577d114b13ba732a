#include "monitor/report/ReadingTexts.hpp"

#include <algorithm>
#include <cmath>

namespace halvermonte {
namespace {

bool names(const std::vector<Reading>& list, const std::string& name) {
  return std::ranges::find(list, name, &Reading::name) != list.end();
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

std::vector<Temperature> temperatureRows(const std::vector<Reading>& fullList,
                                         const std::vector<Reading>& shortList) {
  std::vector<Temperature> rows;
  for (const Reading& reading : fullList) {
    rows.push_back({reading.name, reading.number, names(shortList, reading.name)});
  }
  for (const Reading& reading : shortList) {
    if (!names(fullList, reading.name)) rows.push_back({reading.name, reading.number, true});
  }
  std::ranges::stable_partition(rows, &Temperature::isMarked);
  return rows;
}

}  // namespace halvermonte
