// The IOKit handles alive in this process: numbers, none of which is given twice, so that one used
// after its end is always recognised. Each has one owner, who closes it. Safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace halvermonte::portable {

enum class HandleKind : uint8_t { smcService, smcServices, smcConnection, drive, drives };

/// What a handle stands for. A service list (smcServices, drives) holds `count` services, of which
/// `position` have been taken; for a drive, `position` is its place in the list. A connection to
/// the controller keeps what its last info call reported: the read call has to send it back.
struct Handle {
  HandleKind kind;
  size_t position = 0;
  size_t count = 0;
  uint32_t reportedKey = 0;
  uint32_t reportedSize = 0;
};

class HandleTable {
 public:
  uint32_t open(Handle handle);
  /// The handle, valid until its owner closes it; null if it is not open.
  Handle* find(uint32_t number);
  /// The same; null also if it is of another kind.
  Handle* find(uint32_t number, HandleKind kind);
  /// Ends the handle; false if it is not open.
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
