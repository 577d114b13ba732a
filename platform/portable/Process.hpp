// What a machine says about one of its processes.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace halvermonte {

/// No process has the identifier, or the one that has it has ended.
struct NoProcess {};

/// The machine cannot say.
struct UnreadableProcess {
  std::string reason;  ///< such as "Permission denied"
};

struct ProcessTimes {
  double cpuSeconds = 0;  ///< what all its threads have used since it started
  /// When it started, in a unit of the machine's own. A process that gets the same identifier later
  /// has another value.
  uint64_t start = 0;
};

using Process = std::variant<NoProcess, UnreadableProcess, ProcessTimes>;

}  // namespace halvermonte
