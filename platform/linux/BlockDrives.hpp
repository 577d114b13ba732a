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

/// The bytes of a drive, from the text of its `stat` file or from the counters of its line in
/// /proc/diskstats. Absent if the text is neither.
std::optional<DriveStatistics> driveStatistics(std::string_view counters);

/// Whole physical drives, each counted once. Leaves out devices that lie on other drives
/// (partitions, mapped and RAID devices), devices that are not drives (memory, loop and network
/// devices, optical and floppy drives) and empty card readers. Not thread-safe.
class BlockDrives {
 public:
  BlockDrives(SystemCalls& calls, const std::string& sys, const std::string& proc);

  /// Looks for drives, and returns how many have been found so far. A drive keeps its index. A
  /// drive that has gone stays unreadable, and gets a new index when it comes back. Drives that are
  /// found together are in the order of the hardware.
  size_t count();

  /// Call it before reading the drives one by one.
  void beginWalk();
  Drive read(size_t index);
  /// The file with its counters, followed by its name if the file lists many drives. "" if there is
  /// no such drive.
  std::string sourceOf(size_t index) const;

 private:
  struct Entry {
    std::string name;
    std::string path;             ///< of the device
    std::vector<KeptFile> stats;  ///< its own, then those of its NVMe paths; none in a table
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
  std::string tableText_;  ///< read at the start of the walk
  std::vector<Entry> drives_;
};

}  // namespace halvermonte::linuxos
