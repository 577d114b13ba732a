// Passes of one engine over one machine into one record.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Options.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

class Sampling {
 public:
  /// Makes the engine and the record. The machine, which outlives this object, answers the calling
  /// thread until its end.
  Sampling(ChosenMachine& machine, const Options& options);

  /// Makes the next pass: a simulated machine goes on to its next tick before each but the first.
  /// The answer is the reason of the exception that ended the pass early; absent where none did.
  std::optional<std::string> pass();

  const StatisticsData& record() const { return *record_; }
  const HalvermonteSensorsEngine& engine() const { return engine_; }

 private:
  SimulatedMachine* simulated_;
  ScopedMachine scope_;
  LinuxRoots roots_;
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  bool hasPassed_ = false;
};

}  // namespace halvermonte
