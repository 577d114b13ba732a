// An engine over a machine of the test's, and the record that its passes fill.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/EngineState.hpp"
#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/StatisticsData.hpp"

namespace halvermonte::test {

/// Entries of a name and a value, in order.
using Entries = std::vector<std::pair<std::string, std::string>>;

/// The lines of two texts; each line must end with a line feed, and both have as many.
Entries entriesOf(const Text& names, const Text& values);
/// The dictionary's entries, by key.
Entries entriesOf(const Dictionary& dictionary);

/// The calling thread's machine for as long as the sampler is there.
class Sampler {
 public:
  explicit Sampler(Machine& machine) : scope_(machine) {}

  const StatisticsData& pass() {
    engine_.getSensorsInfo(record_);
    return *record_;
  }

  HalvermonteSensorsEngine& engine() { return engine_; }
  const EngineState& state() const { return engine_.state(); }
  const std::shared_ptr<StatisticsData>& record() { return record_; }

  /// What the last pass stored.
  Entries full() const {
    return entriesOf(record_->sensors_temperature(), record_->sensors_temperatureData());
  }
  Entries mini() const {
    return entriesOf(record_->sensors_temperatureMini(), record_->sensors_temperatureMiniData());
  }
  Entries fans() const { return entriesOf(record_->sensors_fans(), record_->sensors_fansData()); }

 private:
  ScopedMachine scope_;
  HalvermonteSensorsEngine engine_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
};

}  // namespace halvermonte::test
