// Passes of one engine over one machine into one record.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "monitor/HostFields.hpp"
#include "monitor/MachineChoice.hpp"
#include "monitor/Options.hpp"
#include "platform/simulated/MachineRecorder.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

class Sampling {
 public:
  /// Makes the engine and the record. The machine, which outlives this object, answers the calling
  /// thread until its end.
  ///
  /// A recorder, where there is one, stands between the engine and that machine.
  Sampling(ChosenMachine& machine, const Options& options, MachineRecorder* recorder = nullptr);

  /// Makes the next pass: a simulated machine goes on to its next tick before each but the first.
  /// The answer is the reason of the exception that ended the pass early; absent where none did.
  std::optional<std::string> pass();

  const StatisticsData& record() const { return *record_; }
  const HalvermonteSensorsEngine& engine() const { return engine_; }

 private:
  SimulatedMachine* simulated_;
  MachineRecorder* recorder_;
  ScopedMachine scope_;
  HostUsage usage_;
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  bool hasPassed_ = false;
};

}  // namespace halvermonte
