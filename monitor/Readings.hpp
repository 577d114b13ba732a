// The temperatures and fans that a pass shows, as numbers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {

struct Reading {
  /// Of the full list of temperatures, of its short list, or a fan's speed.
  enum class Kind : uint8_t { temperature, mini, fan };

  Kind kind = Kind::temperature;
  std::string name;   ///< may be empty, and may occur more than once
  int32_t value = 0;  ///< degrees Celsius, or revolutions per minute

  bool operator==(const Reading&) const = default;
};

/// "°C" or "rpm".
std::string_view unitOf(Reading::Kind kind);

/// All readings in the record's order: the full list, the short list, the fans. They come from the
/// record's texts, as its dictionaries lose the first of two readings with one name. A line whose
/// value is not a number is left out.
std::vector<Reading> readingsOf(const StatisticsData& record);

}  // namespace halvermonte
