// A pass's temperatures a second time: slow, word by word, and sharing nothing with
// the engine but its inputs.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "tests/support/Sampler.hpp"

namespace halvermonte::test {

class LiteralTemperatures {
 public:
  /// The catalogue: keys in the order of their visits, and the names of those that have one.
  LiteralTemperatures(std::vector<std::string> keys, std::map<std::string, std::string> names)
      : keys_(std::move(keys)), names_(std::move(names)) {}

  struct Lists {
    Entries full;
    Entries mini;
  };
  /// The lists of the next pass. A key is asked for its degrees as often as a pass reads it, and
  /// has -1 if there is no reading.
  Lists pass(const std::function<double(const std::string&)>& degreesOf,
             const HIDServices& sensors);

 private:
  void addGroups(const HIDServices& sensors, Lists& lists, int& budget);
  void addIndividuals(const HIDServices& sensors, Lists& lists, int& budget);
  void addCatalogue(const std::function<double(const std::string&)>& degreesOf, Lists& lists);
  int64_t clamped(const std::string& sensor, int64_t degrees);

  std::vector<std::string> keys_;
  std::map<std::string, std::string> names_;
  std::map<std::string, int64_t> history_;
};

/// What becomes of the full list in the record: the dictionary of sensors, and on arm64 the
/// steadying.
class LiteralSensors {
 public:
  /// Takes a pass's full list; answers what the record's full texts then say.
  Entries published(const Entries& full);
  const std::map<std::string, std::string>& sensors() const { return sensors_; }

 private:
  void steady();

  std::map<std::string, std::string> sensors_;
  std::optional<std::map<std::string, std::string>> previous_;
};

}  // namespace halvermonte::test
