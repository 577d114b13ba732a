// The computer's drives and their byte counters.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/DriveCounters.hpp"
#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Whole physical drives, each counted once. Leaves out devices that lie on other drives
/// (partitions, mapped and RAID devices), devices that are not drives (memory, loop and network
/// devices, optical and floppy drives) and empty card readers. Not thread-safe.
class BlockDrives {
 public:
  BlockDrives(SystemCalls& calls, const std::string& sys, const std::string& proc);

  /// Looks for drives, and returns how many have been found so far. A drive keeps its index, also
  /// if it goes and comes back at the same place. At another place it is another drive. Drives that
  /// are found together are in the order of the hardware.
  size_t count();

  /// Call it before reading the drives one by one.
  void beginWalk();
  /// The bytes of a drive never fall: if it has gone or cannot be read, they are those of the last
  /// walk. A drive that was never read is unreadable.
  Drive read(size_t index);
  /// The file with its counters, followed by its name if the file lists many drives. "" if there is
  /// no such drive.
  std::string sourceOf(size_t index) const;

 private:
  struct Device {
    std::string name;
    std::string path;
    std::optional<KeptFile> stat = std::nullopt;  ///< absent if it is a line of the table
    DriveTotals totals = {};
  };
  struct Entry {
    Device own;
    std::vector<Device> paths;  ///< to a multipath drive
  };

  std::vector<Entry> findDrives() const;
  std::vector<Entry> findDrivesInTable() const;
  DriveTable readTable() const;
  /// Absent if there is no such device in /sys/block.
  std::optional<Device> findDevice(const std::string& name) const;
  bool isDrive(const Device& device) const;
  bool isKnown(std::string_view path) const;
  std::optional<DriveStatistics> readEntry(Entry& drive) const;
  std::optional<DriveStatistics> readDevice(Device& device) const;

  SystemCalls& calls_;
  std::string sys_;
  std::string tableFile_;  ///< /proc/diskstats, for computers without /sys/block
  DriveTable table_;       ///< read at the start of the walk
  std::vector<Entry> drives_;
};

}  // namespace halvermonte::linuxos
