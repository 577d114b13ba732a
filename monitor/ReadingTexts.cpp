#include "monitor/ReadingTexts.hpp"

#include <cmath>

namespace halvermonte {

std::string temperatureText(int32_t celsius, bool fahrenheit, bool unicode) {
  const auto shown =
      fahrenheit ? std::llround(static_cast<double>(celsius) * 9 / 5 + 32) : int64_t{celsius};
  return std::to_string(shown) + (unicode ? " °" : " ") + (fahrenheit ? "F" : "C");
}

std::string fanText(const SensorView& fan) {
  if (!fan.isRead) return "-";
  return fan.number == 0 ? "stopped" : std::to_string(fan.number) + " rpm";
}

}  // namespace halvermonte
