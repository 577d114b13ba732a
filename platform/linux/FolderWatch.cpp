#include "platform/linux/FolderWatch.hpp"

#include <dirent.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

namespace halvermonte::linuxos {

bool FolderWatch::checkForChange() {
  std::swap(entries_, formerEntries_);
  readEntries();
  const bool changed = isFirst_ || entries_ != formerEntries_;
  isFirst_ = false;
  return changed;
}

void FolderWatch::readEntries() {
  entries_.clear();
  if (!folder_) folder_ = Descriptor(calls_, calls_.openFolder(path_.c_str()));
  if (!folder_) return;
  const ssize_t size = listAll();
  if (size <= 0) {
    // The folder may have been removed and another one may take its place, so the next check opens
    // the path again.
    folder_.close();
    return;
  }
  const std::span packed(packed_.data(), static_cast<size_t>(size));
  forEachEntry(packed, [this](uint64_t inode, std::string_view name) {
    entries_.append(std::to_string(inode)).append(" ").append(name).append("\n");
  });
}

ssize_t FolderWatch::listAll() {
  constexpr size_t kLongestEntry = sizeof(dirent64);
  for (;;) {
    const ssize_t size = calls_.list(folder_.number(), packed_.data(), packed_.size());
    // Every entry is there if one more would have fit.
    if (size <= 0 || static_cast<size_t>(size) + kLongestEntry <= packed_.size()) return size;
    packed_.resize(2 * packed_.size());
  }
}

}  // namespace halvermonte::linuxos
