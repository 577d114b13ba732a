// Records that a host might have made otherwise.
#pragma once

#include <optional>
#include <stdexcept>

#include "tests/support/LoggingRecord.hpp"

namespace halvermonte::test {

/// Returns texts of its own, if it has any, instead of those that a pass stored.
class DivertingRecord : public LoggingRecord {
 public:
  std::optional<Text> temperatures;
  std::optional<Text> temperatureValues;
  std::optional<Text> fanNames;
  std::optional<Text> fanValues;

  Text sensors_temperature() const override {
    return temperatures ? *temperatures : LoggingRecord::sensors_temperature();
  }
  Text sensors_temperatureData() const override {
    return temperatureValues ? *temperatureValues : LoggingRecord::sensors_temperatureData();
  }
  Text sensors_fans() const override {
    return fanNames ? *fanNames : LoggingRecord::sensors_fans();
  }
  Text sensors_fansData() const override {
    return fanValues ? *fanValues : LoggingRecord::sensors_fansData();
  }
};

/// Throws when a pass stores its fans, as long as it is told to.
class RefusingRecord : public LoggingRecord {
 public:
  bool refuses = false;

  void setFans(Dictionary value) override {
    if (refuses) throw std::runtime_error("no more fans");
    LoggingRecord::setFans(std::move(value));
  }
};

}  // namespace halvermonte::test
