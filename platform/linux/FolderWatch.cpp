#include "platform/linux/FolderWatch.hpp"

#include <algorithm>

namespace halvermonte::linuxos {

bool FolderWatch::checkForChange() {
  const std::string_view now = readListing();
  const bool changed = isFirst_ || now != last_;
  isFirst_ = false;
  if (changed) last_ = now;
  return changed;
}

std::string_view FolderWatch::readListing() {
  if (!folder_) folder_ = Descriptor(calls_, calls_.openFolder(path_.c_str()));
  if (!folder_) return "";
  const ssize_t size = calls_.list(folder_.number(), packed_.data(), packed_.size());
  // A folder that was removed lists nothing any more; another may stand in its place.
  if (size <= 0) folder_.close();
  return {packed_.data(), static_cast<size_t>(std::max<ssize_t>(size, 0))};
}

}  // namespace halvermonte::linuxos
