// What the exporter knows about its passes as a whole.
#pragma once

#include <chrono>
#include <cstdint>

namespace halvermonte {

struct PassCounts {
  uint64_t passes = 0;  ///< those that ended in an exception too
  uint64_t errors = 0;  ///< those that ended in an exception
  /// When the last pass without an exception ended; the epoch if there was none.
  std::chrono::system_clock::time_point lastGood{};
};

}  // namespace halvermonte
