#include "platform/portable/HandleTable.hpp"

#include "platform/portable/LiveCounters.hpp"

namespace halvermonte::portable {

uint32_t HandleTable::open(Handle handle) {
  std::lock_guard guard(lock_);
  open_.emplace(++lastNumber_, handle);
  return lastNumber_;
}

Handle* HandleTable::find(uint32_t number) {
  std::lock_guard guard(lock_);
  const auto found = open_.find(number);
  return found != open_.end() ? &found->second : nullptr;
}

Handle* HandleTable::find(uint32_t number, HandleKind kind) {
  Handle* const found = find(number);
  return found != nullptr && found->kind == kind ? found : nullptr;
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
