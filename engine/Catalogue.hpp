// An engine's vocabulary of SMC keys and display names, and the walk order that a pass takes
// through it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/Values.hpp"
#include "platform/SensorNames.hpp"

namespace halvermonte {

/// The names that the platform adds. One for a built-in key is left out.
std::vector<SensorName> addedNames();

/// The four key lists, in order. The added keys follow the built-in temperature keys.
Array temperatureKeys(const std::vector<SensorName>& added = {});
Array voltageKeys();
Array currentKeys();
Array powerKeys();

/// Display names by key: the built-in ones of the processor, then the added ones.
Dictionary humanReadableNames(std::string_view processorName, int32_t physicalCores,
                              const std::vector<SensorName>& added = {});

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
