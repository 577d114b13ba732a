#include "platform/portable/KeptLines.hpp"

#include <utility>

namespace halvermonte {
namespace {

thread_local KeptLines* innermost = nullptr;

}  // namespace

KeptLines::KeptLines() : former_(std::exchange(innermost, this)) {}

KeptLines::~KeptLines() { innermost = former_; }

bool KeptLines::keep(std::string_view line) {
  if (innermost == nullptr) return false;
  innermost->text_ += line;
  innermost->text_ += '\n';
  return true;
}

}  // namespace halvermonte
