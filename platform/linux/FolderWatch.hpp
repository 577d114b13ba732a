// Notices changes of a folder's entries.
#pragma once

#include <sys/types.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Compares names and inode numbers. The number shows if an entry was removed and added again
/// between two checks, as the kernel gives it a new one. Each check takes two system calls, and
/// more only if the folder has outgrown the buffer.
class FolderWatch {
 public:
  FolderWatch(SystemCalls& calls, std::string path) : calls_(calls), path_(std::move(path)) {}

  /// Returns true if the folder has changed since the last check, and at the first check.
  bool checkForChange();

 private:
  void readEntries();
  /// Fills the buffer with all entries, in a larger one if need be. Returns their size, or what
  /// SystemCalls::list() returns if it fails.
  ssize_t listAll();

  SystemCalls& calls_;
  std::string path_;
  Descriptor folder_;
  std::vector<char> packed_ = std::vector<char>(16384);  ///< room for hundreds of entries; grows
  std::string entries_;                                  ///< each one's inode number and name
  std::string formerEntries_;
  bool isFirst_ = true;
};

}  // namespace halvermonte::linuxos
