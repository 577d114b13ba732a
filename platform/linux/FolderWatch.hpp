// Tells whether a folder's entries have changed.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Compares names and inode numbers, so an entry that went and came back between two looks is
/// noticed: the kernel gives it another number. Two system calls a look.
class FolderWatch {
 public:
  FolderWatch(SystemCalls& calls, std::string path) : calls_(calls), path_(std::move(path)) {}

  /// Whether the folder is other than at the last look; true at the first.
  bool checkForChange();

 private:
  void readEntries();

  SystemCalls& calls_;
  std::string path_;
  Descriptor folder_;
  std::vector<char> packed_ = std::vector<char>(16384);  ///< room for hundreds of entries
  std::string entries_;                                  ///< each one's inode number and name
  std::string formerEntries_;
  bool isFirst_ = true;
};

}  // namespace halvermonte::linuxos
