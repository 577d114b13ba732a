#include "bench/Allocations.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<uint64_t> count{0};

}  // namespace

uint64_t halvermonte::allocations() { return count.load(std::memory_order_relaxed); }

// The other forms of new and delete come down to these.
void* operator new(size_t size) {
  count.fetch_add(1, std::memory_order_relaxed);
  if (void* block = std::malloc(size)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t /*size*/) noexcept { std::free(block); }
