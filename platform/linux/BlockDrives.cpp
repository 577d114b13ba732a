#include "platform/linux/BlockDrives.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/DevicePath.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// Numbered names of devices that are not drives, or lie on other drives.
constexpr auto kOtherDevices = std::to_array<std::string_view>(
    {"bcache", "dm-", "drbd", "fd", "loop", "md", "nbd", "ram", "rbd", "sr", "zd", "zram"});

/// Names of whole drives, with a letter or a number behind. Used if only names are known.
constexpr auto kLetteredDrives = std::to_array<std::string_view>({"dasd", "hd", "sd", "vd", "xvd"});
constexpr auto kNumberedDrives = std::to_array<std::string_view>({"mmcblk", "mtdblock", "pmem"});

bool isLettered(std::string_view name, std::string_view prefix) {
  return name.starts_with(prefix) && name.size() > prefix.size() &&
         name.find_first_not_of("abcdefghijklmnopqrstuvwxyz") == name.npos;
}

/// Matches "nvme0n1". "nvme0c3n1" is one of its paths.
bool isNvme(std::string_view name) {
  const size_t space = name.find('n', 4);
  return space != name.npos && isNumbered(name.substr(0, space), "nvme") &&
         isNumbered(name.substr(space), "n");
}

bool isWholeDrive(std::string_view name) {
  const auto lettered = [&](std::string_view prefix) { return isLettered(name, prefix); };
  const auto numbered = [&](std::string_view prefix) { return isNumbered(name, prefix); };
  return isNvme(name) || std::any_of(kLetteredDrives.begin(), kLetteredDrives.end(), lettered) ||
         std::any_of(kNumberedDrives.begin(), kNumberedDrives.end(), numbered);
}

bool isOtherDevice(std::string_view name) {
  const bool isCardArea = name.starts_with("mmcblk") && !isNumbered(name, "mmcblk");
  return isCardArea ||
         std::any_of(kOtherDevices.begin(), kOtherDevices.end(),
                     [&](std::string_view prefix) { return isNumbered(name, prefix); });
}

bool isNvmePathOf(std::string_view name, std::string_view head) {
  const size_t space = head.find('n', 4);
  if (!isNvme(head) || !name.starts_with(head.substr(0, space))) return false;
  const std::string_view rest = name.substr(space);
  const size_t end = rest.find('n');
  return end != rest.npos && isNumbered(rest.substr(0, end), "c") &&
         rest.substr(end) == head.substr(space);
}

int64_t wrappingSum(int64_t first, int64_t second) {
  return static_cast<int64_t>(static_cast<uint64_t>(first) + static_cast<uint64_t>(second));
}

void add(DriveStatistics& sum, const std::optional<DriveStatistics>& part) {
  if (!part) return;
  sum.bytesRead = wrappingSum(*sum.bytesRead, *part->bytesRead);
  sum.bytesWritten = wrappingSum(*sum.bytesWritten, *part->bytesWritten);
}

bool isIdle(const DriveStatistics& drive) {
  return *drive.bytesRead == 0 && *drive.bytesWritten == 0;
}

void readStat(KeptFile& stat, DriveTotals& totals) {
  if (stat.state() == KeptFile::State::gone) stat.reopen();
  std::array<char, 512> buffer;
  const std::optional<DriveStatistics> counters = driveStatistics(stat.read(buffer));
  if (counters) totals.note(*counters);
  // A device that comes back counts from 0.
  if (stat.state() == KeptFile::State::gone) totals.restart();
}

}  // namespace

BlockDrives::BlockDrives(SystemCalls& calls, const std::string& sys, const std::string& proc)
    : calls_(calls), sys_(sys), tableFile_(proc + "/diskstats") {}

size_t BlockDrives::count() {
  std::vector<Entry> present = findDrives();
  std::stable_sort(present.begin(), present.end(), [](const Entry& first, const Entry& second) {
    return standsBeforeInHardware(first.own.path, second.own.path);
  });
  for (Entry& drive : present) {
    if (!isKnown(drive.own.path)) drives_.push_back(std::move(drive));
  }
  return drives_.size();
}

void BlockDrives::beginWalk() {
  const bool needsTable = std::any_of(drives_.begin(), drives_.end(),
                                      [](const Entry& drive) { return !drive.own.stat; });
  if (needsTable) table_ = readTable();
}

Drive BlockDrives::read(size_t index) {
  if (index >= drives_.size()) return UnreadableDrive{};
  const std::optional<DriveStatistics> bytes = readEntry(drives_[index]);
  return bytes ? Drive(*bytes) : Drive(UnreadableDrive{});
}

std::string BlockDrives::sourceOf(size_t index) const {
  if (index >= drives_.size()) return "";
  const Device& drive = drives_[index].own;
  return drive.stat ? drive.path + "/stat" : tableFile_ + " " + drive.name;
}

std::vector<BlockDrives::Entry> BlockDrives::findDrives() const {
  const std::optional<std::vector<std::string>> names = namesIn(calls_, sys_ + "/block");
  if (!names) return findDrivesInTable();
  std::vector<Entry> drives;
  for (const std::string& name : *names) {
    std::optional<Device> own = findDevice(name);
    if (!own || !isDrive(*own)) continue;
    drives.push_back({std::move(*own), {}});
    for (const std::string& other : *names) {
      if (!isNvmePathOf(other, name)) continue;
      if (auto path = findDevice(other)) drives.back().paths.push_back(std::move(*path));
    }
  }
  return drives;
}

std::vector<BlockDrives::Entry> BlockDrives::findDrivesInTable() const {
  std::vector<Entry> drives;
  const DriveTable table = readTable();
  for (const auto& [name, counters] : table) {
    if (!isWholeDrive(name)) continue;
    drives.push_back({Device{.name = name, .path = name}, {}});
    for (const auto& [other, otherCounters] : table) {
      if (!isNvmePathOf(other, name)) continue;
      drives.back().paths.push_back(Device{.name = other, .path = other});
    }
  }
  return drives;
}

DriveTable BlockDrives::readTable() const {
  return driveTable(textOf(calls_, tableFile_, kTableBound).value_or(""));
}

std::optional<BlockDrives::Device> BlockDrives::findDevice(const std::string& name) const {
  const std::string link = sys_ + "/block/" + name;
  const std::optional<std::string> path = devicePath(sys_, link);
  const std::optional<std::string> folder = realPath(link);
  if (!path || !folder) return std::nullopt;
  // The link may lead to another device later, but the folder is this one's.
  return Device{.name = name, .path = *path, .stat = KeptFile(calls_, *folder + "/stat")};
}

bool BlockDrives::isDrive(const Device& device) const {
  // The kernel lists the head of a multipath drive as virtual, but it is a drive.
  const bool isVirtual =
      device.path.starts_with("virtual/") && !device.path.starts_with("virtual/nvme-subsystem/");
  if (isVirtual || isOtherDevice(device.name)) return false;
  const std::string folder = sys_ + "/block/" + device.name;
  if (trimmedTextOf(calls_, folder + "/hidden") == "1") return false;
  if (trimmedTextOf(calls_, folder + "/size") == "0") return false;
  return namesOrNone(calls_, folder + "/slaves").empty();
}

bool BlockDrives::isKnown(std::string_view path) const {
  return std::any_of(drives_.begin(), drives_.end(),
                     [&](const Entry& known) { return known.own.path == path; });
}

std::optional<DriveStatistics> BlockDrives::readEntry(Entry& drive) const {
  std::optional<DriveStatistics> sum = readDevice(drive.own);
  if (!sum || !isIdle(*sum)) return sum;
  // Before Linux 6.2 the kernel counts only the paths of a multipath drive.
  for (Device& path : drive.paths) add(*sum, readDevice(path));
  return sum;
}

std::optional<DriveStatistics> BlockDrives::readDevice(Device& device) const {
  if (device.stat) {
    readStat(*device.stat, device.totals);
  } else if (const auto row = table_.find(device.name); row != table_.end()) {
    device.totals.note(row->second);
  }
  return device.totals.statistics();
}

}  // namespace halvermonte::linuxos
