// One property's storage: read and written as a whole from any thread.
#pragma once

#include <atomic>
#include <mutex>
#include <type_traits>
#include <utility>

#include "halvermonte/Export.h"

namespace halvermonte {

namespace detail {
/// The lock that guards the object at the address. Few locks serve all properties of all records,
/// so that a record stays small. They stand in the library, so that accessors inlined into a host
/// take the same ones as the library's own.
HALVERMONTE_EXPORT std::mutex& lockFor(const void* address);
}  // namespace detail

/// For value handles. std::atomic<std::shared_ptr> would do the same, but Apple's library lacks it.
template <class Stored>
class Atomic {
 public:
  Stored load() const {
    std::lock_guard guard(detail::lockFor(this));
    return value_;
  }
  /// The former value is dropped outside the lock: its end may run the host's code.
  void store(Stored value) {
    std::lock_guard guard(detail::lockFor(this));
    std::swap(value_, value);
  }

 private:
  Stored value_;
};

/// For flags and integers.
template <class Stored>
  requires std::is_integral_v<Stored>
class Atomic<Stored> {
 public:
  Stored load() const { return value_.load(std::memory_order_acquire); }
  void store(Stored value) { value_.store(value, std::memory_order_release); }

 private:
  std::atomic<Stored> value_{0};
};

}  // namespace halvermonte
