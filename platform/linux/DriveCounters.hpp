// The byte counters of a drive: their texts, and their totals.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte::linuxos {

/// The bytes of a drive, from the text of its `stat` file or from the counters of its line in
/// /proc/diskstats. Absent if the text is neither.
std::optional<DriveStatistics> driveStatistics(std::string_view counters);

/// The bytes of each device in the text of /proc/diskstats, by its name. Lines without counters are
/// left out.
using DriveTable = std::map<std::string, DriveStatistics, std::less<>>;
DriveTable driveTable(std::string_view text);

/// Adds up a counter that may start again from 0.
class RisingTotal {
 public:
  /// A counter that is lower than before has started again.
  void note(int64_t counter);
  /// The next counter is a new one, which starts from 0.
  void restart();
  int64_t bytes() const;

 private:
  uint64_t before_ = 0;  ///< by the former counters
  uint64_t newest_ = 0;
};

/// What a drive has moved, as its counters have shown it so far. It never falls: a drive that
/// cannot be read or has gone keeps what it had, and if it comes back it adds what it moves from
/// then on.
class DriveTotals {
 public:
  void note(const DriveStatistics& counters);
  void restart();
  /// Absent if there were no counters yet.
  std::optional<DriveStatistics> statistics() const;

 private:
  bool hasCounters_ = false;
  RisingTotal read_;
  RisingTotal written_;
};

}  // namespace halvermonte::linuxos
