// Passes of one engine over one machine into one record.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "platform/portable/Machine.hpp"
#include "platform/simulated/MachineRecorder.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

/// A machine to sample, and what to call it.
struct ChosenMachine {
  std::unique_ptr<Machine> machine;
  std::unique_ptr<MachineRecorder> recorder = nullptr;  ///< of the machine; null: not recorded
  std::string title = "";    ///< its name, and why this machine if nobody asked for it
  bool isSimulated = false;  ///< from a machine file
};

class Sampling {
 public:
  /// Makes the engine and the record. The machine answers the calling thread as long as this object
  /// lives; objects of one thread end in the reverse order of their making.
  explicit Sampling(ChosenMachine chosen);

  /// Makes the next pass. The machine moves on to its next tick before each pass but the first.
  /// Returns the reason of the exception that ended the pass early; absent if none did.
  std::optional<std::string> pass();
  /// Makes the first pass ahead of time and returns its reason; pass() returns the same pass later.
  /// REQUIRES: no pass was made yet.
  std::optional<std::string> firstPass();
  /// Whether pass() has returned a pass.
  bool hasPassed() const { return hasPassed_; }

  Machine& machine() { return machine_; }
  const std::string& title() const { return chosen_.title; }
  bool isSimulated() const { return chosen_.isSimulated; }
  /// Null unless the machine is recorded.
  MachineRecorder* recorder() { return chosen_.recorder.get(); }
  const StatisticsData& record() const { return *record_; }
  const HalvermonteSensorsEngine& engine() const { return engine_; }

 private:
  std::optional<std::string> makePass();
  /// Fills what a host fills, if the machine says anything about itself.
  void storeFacts();

  ChosenMachine chosen_;
  Machine& machine_;  ///< the recorder, if there is one
  ScopedMachine scope_;
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  bool hasPassed_ = false;
  bool isAhead_ = false;  ///< the first pass was made and not yet returned by pass()
  std::optional<std::string> reason_;
};

}  // namespace halvermonte
