// What a machine says about itself besides its sensors.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace halvermonte {

/// A computer's memory, in bytes.
struct MemoryFacts {
  uint64_t total = 0;
  uint64_t free = 0;
  uint64_t used = 0;
  uint64_t inactive = 0;
  uint64_t wired = 0;  ///< never paged out
  uint64_t other = 0;  ///< what is left
};

/// Each fact is absent if the machine does not know it.
struct HostFacts {
  std::optional<std::string> modelName;
  std::optional<std::string> modelIdentifier;
  std::optional<int32_t> logicalCores;
  std::optional<uint64_t> uptime;  ///< seconds
  std::optional<MemoryFacts> memory;
};

}  // namespace halvermonte
