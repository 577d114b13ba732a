// The record's text pairs as readings, and readings as texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "record/StatisticsData.hpp"

namespace halvermonte {

struct Reading {
  std::string name;
  std::string value;  ///< the digits as they stand in the record
  bool isMarked = false;
};

/// The full list, and what only the short list names; the marked ones, whose name the short list
/// has, come first. Read from the texts: the dictionaries lose the second of two equal names.
std::vector<Reading> temperatureReadings(const StatisticsData& record);

std::vector<Reading> fanReadings(const StatisticsData& record);

/// Absent where the text is no whole number, or one beyond 64 bits.
std::optional<int64_t> wholeNumber(std::string_view digits);

/// "47 °C", or "117 °F"; " C" without unicode. A value that is no whole number stays as it is.
std::string temperatureText(std::string_view celsius, bool fahrenheit, bool unicode);

/// "1200 rpm"; "stopped" for 0.
std::string fanText(std::string_view speed);

}  // namespace halvermonte
