// A walk over a machine's drives, as an engine makes one in each pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

#include "halvermonte/Machine.hpp"

namespace halvermonte::test {

/// The bytes read of each drive, in the machine's order. -1 for a drive that cannot be read.
inline std::vector<int64_t> walk(Machine& machine, size_t count) {
  std::vector<int64_t> bytes;
  machine.beginDriveWalk();
  for (size_t i = 0; i < count; ++i) {
    const Drive drive = machine.drive(i);
    const auto* const statistics = std::get_if<DriveStatistics>(&drive);
    bytes.push_back(statistics != nullptr ? statistics->bytesRead.value_or(-2) : -1);
  }
  return bytes;
}

}  // namespace halvermonte::test
