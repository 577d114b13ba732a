// Passes of one engine over one machine into one record.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "engine/HalvermonteSensorsEngine.hpp"
#include "platform/portable/Machine.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

class Sampling {
 public:
  /// Makes the engine and the record. The machine outlives this object and answers the calling
  /// thread as long as this object lives.
  explicit Sampling(Machine& machine);

  /// Makes the next pass. The machine moves on to its next tick before each pass but the first.
  /// The answer is the reason of the exception that ended the pass early; absent where none did.
  std::optional<std::string> pass();

  const StatisticsData& record() const { return *record_; }
  const HalvermonteSensorsEngine& engine() const { return engine_; }

 private:
  /// Fills what a host fills, if the machine says anything about itself.
  void storeFacts();

  Machine& machine_;
  ScopedMachine scope_;
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  bool hasPassed_ = false;
};

}  // namespace halvermonte
