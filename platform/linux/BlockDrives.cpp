#include "platform/linux/BlockDrives.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <utility>

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

std::optional<int64_t> bytes(std::string_view sectors) {
  constexpr uint64_t kSectorBytes = 512;  // even if the drive has larger blocks
  const std::optional<uint64_t> count = unsignedInteger(sectors);
  return count ? std::optional(static_cast<int64_t>(*count * kSectorBytes)) : std::nullopt;
}

int64_t wrappingSum(int64_t first, int64_t second) {
  return static_cast<int64_t>(static_cast<uint64_t>(first) + static_cast<uint64_t>(second));
}

void add(DriveStatistics& sum, const std::optional<DriveStatistics>& part) {
  if (!part) return;
  sum.bytesRead = wrappingSum(*sum.bytesRead, *part->bytesRead);
  sum.bytesWritten = wrappingSum(*sum.bytesWritten, *part->bytesWritten);
}

using Words = std::vector<std::string_view>;

std::optional<DriveStatistics> statisticsOf(const Words& counters) {
  if (counters.size() < 11) return std::nullopt;
  const DriveStatistics drive{bytes(counters[2]), bytes(counters[6])};
  if (!drive.bytesRead || !drive.bytesWritten) return std::nullopt;
  return drive;
}

/// A line of /proc/diskstats: two numbers, the device's name, its counters.
struct TableRow {
  std::string_view name;
  Words counters;
};

std::vector<TableRow> rowsOf(std::string_view table) {
  constexpr size_t kNameField = 2;
  std::vector<TableRow> rows;
  for (const std::string_view line : split(table, '\n')) {
    const Words fields = words(line);
    if (fields.size() <= kNameField) continue;
    rows.push_back({fields[kNameField], Words(fields.begin() + kNameField + 1, fields.end())});
  }
  return rows;
}

bool isIdle(const DriveStatistics& drive) {
  return *drive.bytesRead == 0 && *drive.bytesWritten == 0;
}

std::optional<DriveStatistics> readStat(KeptFile& stat) {
  std::array<char, 512> buffer;
  return driveStatistics(stat.read(buffer));
}

}  // namespace

std::optional<DriveStatistics> driveStatistics(std::string_view counters) {
  return statisticsOf(words(counters));
}

BlockDrives::BlockDrives(SystemCalls& calls, const std::string& sys, const std::string& proc)
    : calls_(calls), sys_(sys), table_(proc + "/diskstats") {}

size_t BlockDrives::count() {
  std::vector<Entry> present = findDrives();
  std::stable_sort(present.begin(), present.end(), [](const Entry& first, const Entry& second) {
    return standsBeforeInHardware(first.path, second.path);
  });
  for (Entry& drive : present) {
    if (!findAgain(drive.path)) drives_.push_back(std::move(drive));
  }
  return drives_.size();
}

void BlockDrives::beginWalk() {
  const bool needsTable = std::any_of(drives_.begin(), drives_.end(),
                                      [](const Entry& drive) { return drive.stats.empty(); });
  if (needsTable) tableText_ = textOf(calls_, table_, kTableBound).value_or("");
}

Drive BlockDrives::read(size_t index) {
  if (index >= drives_.size()) return UnreadableDrive{};
  const std::optional<DriveStatistics> counters = readStatistics(drives_[index]);
  return counters ? Drive(*counters) : Drive(UnreadableDrive{});
}

std::string BlockDrives::sourceOf(size_t index) const {
  if (index >= drives_.size()) return "";
  const Entry& drive = drives_[index];
  return drive.stats.empty() ? table_ + " " + drive.name : drive.path + "/stat";
}

std::vector<BlockDrives::Entry> BlockDrives::findDrives() const {
  const std::optional<std::vector<std::string>> names = namesIn(calls_, sys_ + "/block");
  if (!names) return findDrivesInTable();
  std::vector<Entry> drives;
  for (const std::string& name : *names) {
    const std::optional<std::string> path = devicePath(sys_, sys_ + "/block/" + name);
    if (!path || !isDrive(name, *path)) continue;
    drives.push_back({name, *path, {}});
    drives.back().stats.emplace_back(calls_, sys_ + "/block/" + name + "/stat");
    addPaths(drives.back(), *names);
  }
  return drives;
}

std::vector<BlockDrives::Entry> BlockDrives::findDrivesInTable() const {
  std::vector<Entry> drives;
  const std::string table = textOf(calls_, table_, kTableBound).value_or("");
  for (const TableRow& row : rowsOf(table)) {
    if (!isWholeDrive(row.name)) continue;
    drives.push_back({std::string(row.name), std::string(row.name), {}});
  }
  return drives;
}

bool BlockDrives::isDrive(const std::string& name, const std::string& path) const {
  // The kernel lists the head of a multipath drive as virtual, but it is a drive.
  const bool isVirtual =
      path.starts_with("virtual/") && !path.starts_with("virtual/nvme-subsystem/");
  if (isVirtual || isOtherDevice(name)) return false;
  const std::string folder = sys_ + "/block/" + name;
  if (trimmedTextOf(calls_, folder + "/hidden") == "1") return false;
  if (trimmedTextOf(calls_, folder + "/size") == "0") return false;
  return namesOrNone(calls_, folder + "/slaves").empty();
}

void BlockDrives::addPaths(Entry& drive, const std::vector<std::string>& names) const {
  for (const std::string& name : names) {
    if (isNvmePathOf(name, drive.name)) {
      drive.stats.emplace_back(calls_, sys_ + "/block/" + name + "/stat");
    }
  }
}

bool BlockDrives::findAgain(std::string_view path) {
  return std::any_of(drives_.begin(), drives_.end(), [&](Entry& known) {
    if (known.path != path) return false;
    readStatistics(known);  // notices if the drive has gone
    return known.stats.empty() || known.stats.front().state() != KeptFile::State::gone;
  });
}

std::optional<DriveStatistics> BlockDrives::readStatistics(Entry& drive) const {
  if (drive.stats.empty()) return tableStatistics(drive.name);
  std::optional<DriveStatistics> sum = readStat(drive.stats.front());
  if (!sum || !isIdle(*sum)) return sum;
  // Before Linux 6.2 the kernel counts only the paths of a multipath drive.
  for (KeptFile& path : std::span(drive.stats).subspan(1)) add(*sum, readStat(path));
  return sum;
}

std::optional<DriveStatistics> BlockDrives::tableStatistics(std::string_view name) const {
  const std::vector<TableRow> rows = rowsOf(tableText_);
  const auto own =
      std::find_if(rows.begin(), rows.end(), [&](const TableRow& row) { return row.name == name; });
  if (own == rows.end()) return std::nullopt;
  std::optional<DriveStatistics> sum = statisticsOf(own->counters);
  if (!sum || !isIdle(*sum)) return sum;
  for (const TableRow& row : rows) {
    if (isNvmePathOf(row.name, name)) add(*sum, statisticsOf(row.counters));
  }
  return sum;
}

}  // namespace halvermonte::linuxos
