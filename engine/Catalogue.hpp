// The engine's vocabulary of SMC keys and display names, and the walk order that a pass takes
// through it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "halvermonte/Values.hpp"

namespace halvermonte {

/// The four key lists, in order.
Array temperatureKeys();
Array voltageKeys();
Array currentKeys();
Array powerKeys();

/// Display names by key. Those of CPU cores and GPU clusters depend on the chip: by the prefix of
/// the processor's name, and by the number of physical cores.
Dictionary humanReadableNames(std::string_view processorName, int32_t physicalCores);

/// The temperature keys as a pass visits them, each with its name's rank among all names in the
/// order shown to people. Made once, so that a pass neither looks names up nor sorts them.
class TemperatureWalk {
 public:
  static constexpr int kUnnamed = -1;
  struct Step {
    Text key;
    int rank;  ///< kUnnamed: never shown
  };

  TemperatureWalk(const Array& keys, const Dictionary& names);

  const std::vector<Step>& steps() const noexcept { return steps_; }
  const std::vector<Text>& rankedNames() const noexcept { return rankedNames_; }

 private:
  std::vector<Step> steps_;
  std::vector<Text> rankedNames_;
};

}  // namespace halvermonte
