#include "platform/portable/HandleTable.hpp"

#include "platform/portable/LiveCounters.hpp"

namespace halvermonte::portable {

uint32_t HandleTable::open(Handle handle) {
  std::lock_guard guard(lock_);
  open_.emplace(++lastNumber_, handle);
  return lastNumber_;
}

std::optional<Handle> HandleTable::find(uint32_t number) {
  std::lock_guard guard(lock_);
  const auto found = open_.find(number);
  return found != open_.end() ? std::optional(found->second) : std::nullopt;
}

bool HandleTable::setPosition(uint32_t number, size_t position) {
  std::lock_guard guard(lock_);
  const auto found = open_.find(number);
  if (found == open_.end()) return false;
  found->second.position = position;
  return true;
}

bool HandleTable::close(uint32_t number) {
  std::lock_guard guard(lock_);
  return open_.erase(number) == 1;
}

size_t HandleTable::live() {
  std::lock_guard guard(lock_);
  return open_.size();
}

HandleTable& handles() {
  static HandleTable table;
  return table;
}

size_t liveHandles() { return handles().live(); }

}  // namespace halvermonte::portable
