// A pass as the texts that clients get.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "monitor/PassView.hpp"
#include "monitor/exporter/PassCounts.hpp"

namespace halvermonte {

/// Made once for a pass, and never changed: any number of threads may read it.
struct ServedPass {
  std::string metrics;   ///< for /metrics
  std::string record;    ///< for /record: one line
  std::string readings;  ///< for /readings: one line
  /// When the last pass without an exception ended.
  std::chrono::steady_clock::time_point lastGood;
};

/// Makes the texts of one run.
class ServedPasses {
 public:
  explicit ServedPasses(std::chrono::duration<double> interval) : interval_(interval) {}

  /// REQUIRES: the pass has just ended.
  ServedPass of(const PassView& view);

 private:
  std::chrono::duration<double> interval_;
  PassCounts counts_;
  std::chrono::steady_clock::time_point lastGood_;
};

}  // namespace halvermonte
