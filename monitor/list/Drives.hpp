// The drives that a machine counts, each by itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Machine.hpp"

namespace halvermonte {

struct ListedDrive {
  std::string source;  ///< "block pci0000:00/ata1/block/sda/stat", or "drive 1"
  std::optional<int64_t> bytesRead = std::nullopt;
  std::optional<int64_t> bytesWritten = std::nullopt;
  std::string reason = "";  ///< why there are no numbers
};

/// Reads the drives. If the walk over them fails, there is one entry with the reason.
std::vector<ListedDrive> listedDrives(Machine& machine);

}  // namespace halvermonte
