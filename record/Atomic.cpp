#include "halvermonte/Atomic.hpp"

#include <array>
#include <functional>

namespace halvermonte {

std::mutex& detail::lockFor(const void* address) {
  static constinit std::array<std::mutex, 64> locks;
  return locks[std::hash<const void*>()(address) / sizeof(void*) % locks.size()];
}

}  // namespace halvermonte
