#include "platform/linux/DriveCounters.hpp"

#include <cstddef>
#include <span>
#include <vector>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

std::optional<int64_t> bytes(std::string_view sectors) {
  constexpr uint64_t kSectorBytes = 512;  // even if the drive has larger blocks
  const std::optional<uint64_t> count = unsignedInteger(sectors);
  return count ? std::optional(static_cast<int64_t>(*count * kSectorBytes)) : std::nullopt;
}

std::optional<DriveStatistics> statisticsOf(std::span<const std::string_view> counters) {
  if (counters.size() < 11) return std::nullopt;
  const DriveStatistics drive{bytes(counters[2]), bytes(counters[6])};
  if (!drive.bytesRead || !drive.bytesWritten) return std::nullopt;
  return drive;
}

}  // namespace

std::optional<DriveStatistics> driveStatistics(std::string_view counters) {
  return statisticsOf(words(counters));
}

DriveTable driveTable(std::string_view text) {
  constexpr size_t kNameField = 2;  // after the device's two numbers
  DriveTable table;
  for (const std::string_view line : split(text, '\n')) {
    const std::vector<std::string_view> fields = words(line);
    if (fields.size() <= kNameField) continue;
    const auto counters = statisticsOf(std::span(fields).subspan(kNameField + 1));
    if (counters) table.emplace(fields[kNameField], *counters);
  }
  return table;
}

void RisingTotal::note(int64_t counter) {
  const auto bytes = static_cast<uint64_t>(counter);
  if (bytes < newest_) restart();
  newest_ = bytes;
}

void RisingTotal::restart() {
  before_ += newest_;
  newest_ = 0;
}

int64_t RisingTotal::bytes() const { return static_cast<int64_t>(before_ + newest_); }

void DriveTotals::note(const DriveStatistics& counters) {
  hasCounters_ = true;
  read_.note(counters.bytesRead.value_or(0));
  written_.note(counters.bytesWritten.value_or(0));
}

void DriveTotals::restart() {
  read_.restart();
  written_.restart();
}

std::optional<DriveStatistics> DriveTotals::statistics() const {
  if (!hasCounters_) return std::nullopt;
  return DriveStatistics{read_.bytes(), written_.bytes()};
}

}  // namespace halvermonte::linuxos
