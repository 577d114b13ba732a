// Readings as outputs for people word them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "monitor/PassView.hpp"

namespace halvermonte {

/// From these on a temperature stands out, in degrees Celsius.
inline constexpr int32_t kWarmDegrees = 80, kHotDegrees = 95;

/// What stands beside the reading of a sensor that the machine does not give any more.
inline constexpr std::string_view kNotRead = "no longer read";

/// "47 °C", or "117 °F"; " C" without unicode.
std::string temperatureText(int32_t celsius, bool fahrenheit, bool unicode);

/// "1200 rpm"; "stopped" for 0, and "-" without a reading.
std::string fanText(const SensorView& fan);

}  // namespace halvermonte
