// The IOKit handles alive in this process: numbers, none of which is given twice, so that one used
// after its end is always recognised. Each has one owner, who closes it. Safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace halvermonte::portable {

enum class HandleKind : uint8_t { smcService, smcServices, smcConnection, drive, drives };

/// What a handle stands for. A service list (smcServices, drives) holds `count` services, of which
/// `position` have been taken; for a drive, `position` is its place in the list.
struct Handle {
  HandleKind kind;
  size_t position = 0;
  size_t count = 0;
};

class HandleTable {
 public:
  uint32_t open(Handle handle);
  /// The handle; absent where it is not open.
  std::optional<Handle> find(uint32_t number);
  /// Sets a list's position; false where the handle is not open.
  bool setPosition(uint32_t number, size_t position);
  /// Ends the handle; false where it is not open.
  bool close(uint32_t number);

  size_t live();

 private:
  std::mutex lock_;
  std::unordered_map<uint32_t, Handle> open_;
  uint32_t lastNumber_ = 0;
};

/// The process's table.
HandleTable& handles();

}  // namespace halvermonte::portable
