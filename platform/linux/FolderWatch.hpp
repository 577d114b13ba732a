// Tells whether a folder's entries have changed.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/Files.hpp"

namespace halvermonte::linuxos {

/// Compares names and inode numbers, so an entry that went and came back between two looks is
/// noticed: the kernel gives it another number. Two system calls a look.
class FolderWatch {
 public:
  FolderWatch(SystemCalls& calls, std::string path) : calls_(calls), path_(std::move(path)) {}

  /// Whether the folder is other than at the last look; true at the first.
  bool checkForChange();

 private:
  std::string_view readListing();

  SystemCalls& calls_;
  std::string path_;
  Descriptor folder_;
  /// Holds hundreds of entries. The kernel leaves the gaps between them as they are, so it is
  /// always the same one.
  std::vector<char> packed_ = std::vector<char>(16384);
  std::string last_;
  bool isFirst_ = true;
};

}  // namespace halvermonte::linuxos
