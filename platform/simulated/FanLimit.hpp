// Refuses machine files that would end the process.
#pragma once

#include <string>

#include "platform/simulated/JsonPlace.hpp"
#include "platform/simulated/MachineFile.hpp"
#include "platform/simulated/SimulatedController.hpp"

namespace halvermonte {

/// A pass ends the process if the controller reports more fans than there are keys for.
class FanLimit {
 public:
  /// Throws MachineFileError if a pass over the tick could see too many fans: the place is that of
  /// the answer which counts them. REQUIRES: the ticks in order, and that each outlives this
  /// object.
  void check(const MachineTick& tick, const JsonPlace& place);

 private:
  SimulatedController controller_;
  std::string answerPlace_;
};

}  // namespace halvermonte
