// Readings as a report words them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "halvermonte/Readings.hpp"

namespace halvermonte {

/// "47 °C", or "117 °F"; " C" without unicode.
std::string temperatureText(int32_t celsius, bool fahrenheit, bool unicode);

/// "1200 rpm"; "stopped" for 0.
std::string fanText(int32_t speed);

/// A row of the report's temperatures.
struct Temperature {
  std::string name;
  int32_t degrees = 0;
  bool isMarked = false;  ///< the short list names it
};

/// The full list, and what only the short list names; the marked ones come first.
std::vector<Temperature> temperatureRows(const std::vector<Reading>& fullList,
                                         const std::vector<Reading>& shortList);

}  // namespace halvermonte
