// The block-storage drivers of a Mac.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/IOOwned.hpp"

namespace halvermonte::macos {

/// One thread at a time.
class BlockDrives {
 public:
  /// Matches the drivers anew. Absent if the matching call fails.
  std::optional<size_t> count();
  /// Takes the drivers again that were matched.
  void beginWalk();
  Drive read(size_t index) const;

 private:
  void takeAll();

  std::optional<IOOwned> matched_;
  std::vector<IOOwned> drives_;
};

}  // namespace halvermonte::macos
