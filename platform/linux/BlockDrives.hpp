// The computer's drives and their byte counters.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte::linuxos {

/// The bytes of a drive, from the text of its `stat` file or from what follows the name in a line
/// of /proc/diskstats; absent where the text is neither.
std::optional<DriveStatistics> driveStatistics(std::string_view counters);

/// Whole physical drives, each once: what is stacked on them (partitions, mapped and RAID devices),
/// what is no drive (memory, loop and network devices, optical and floppy drives) and what is empty
/// does not count. Not locked.
class BlockDrives {
 public:
  BlockDrives(SystemCalls& calls, const std::string& sys, const std::string& proc);

  /// Looks for drives and returns how many were ever found. A drive keeps its index; one that has
  /// gone stays unreadable, and gets another index when it comes back. The drives of one look are
  /// in the order of the hardware.
  size_t count();

  /// Before the drives are read one by one.
  void beginWalk();
  Drive read(size_t index);
  /// The file of its counters, and in a table of many its name there; "" where there is no drive.
  std::string sourceOf(size_t index) const;

 private:
  struct Entry {
    std::string name;
    std::string path;             ///< the device's
    std::vector<KeptFile> stats;  ///< its own, then those of the paths that lead to it
  };

  std::vector<Entry> findDrives() const;
  std::vector<Entry> findDrivesInTable() const;
  bool isDrive(const std::string& name, const std::string& path) const;
  void addPaths(Entry& drive, const std::vector<std::string>& names) const;
  /// Returns true if a drive found earlier is still there under the path.
  bool findAgain(std::string_view path);
  std::optional<DriveStatistics> readStatistics(Entry& drive) const;
  std::optional<DriveStatistics> tableStatistics(std::string_view name) const;

  SystemCalls& calls_;
  std::string sys_;
  std::string table_;      ///< /proc/diskstats, for computers without /sys/block
  std::string tableText_;  ///< as of this walk
  std::vector<Entry> drives_;
};

}  // namespace halvermonte::linuxos
