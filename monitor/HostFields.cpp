#include "monitor/HostFields.hpp"

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Foundation.hpp"
#include "platform/linux/Files.hpp"
#include "platform/linux/HostName.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte {

namespace {

using linuxos::SystemCalls;

// Apple silicon has a device tree, other computers a DMI table.
std::string modelIdentifier(const std::string& sys) {
  const auto compatible =
      linuxos::textOf(SystemCalls::real(), sys + "/firmware/devicetree/base/compatible");
  if (compatible) return compatible->substr(0, compatible->find('\0'));
  return linuxos::wordingOf(SystemCalls::real(), sys + "/class/dmi/id/product_name");
}

// How many processors a list such as "0-3,6" names; 0 where it is none.
int32_t processorsIn(std::string_view list) {
  int32_t count = 0;
  for (const std::string_view piece : linuxos::split(list, ',')) {
    const size_t dash = piece.find('-');
    const auto first = linuxos::unsignedInteger(piece.substr(0, dash));
    const auto last = dash == piece.npos ? first : linuxos::unsignedInteger(piece.substr(dash + 1));
    if (!first || !last || *last < *first || *last > 1 << 20) return 0;
    count += static_cast<int32_t>(*last - *first) + 1;
  }
  return count;
}

// The table's lines read "MemFree:        23498680 kB".
class MemoryTable {
 public:
  explicit MemoryTable(std::string_view table) : table_(table) {}

  // Bytes; 0 where the kernel does not tell.
  uint64_t operator[](std::string_view name) const {
    const auto words = linuxos::words(linuxos::field(table_, name, ':').value_or(""));
    return words.empty() ? 0 : linuxos::unsignedInteger(words.front()).value_or(0) * 1024;
  }

 private:
  std::string_view table_;
};

uint64_t without(uint64_t whole, uint64_t part) { return whole > part ? whole - part : 0; }

std::string durationText(uint64_t seconds) {
  const unsigned long long minutes = seconds / 60;
  char text[64];
  if (minutes < 60) {
    std::snprintf(text, sizeof text, "%llu min", minutes);
  } else if (minutes < 24 * 60) {
    std::snprintf(text, sizeof text, "%llu h %llu min", minutes / 60, minutes % 60);
  } else {
    std::snprintf(text, sizeof text, "%llu d %llu h", minutes / 60 / 24, minutes / 60 % 24);
  }
  return text;
}

void fillUptime(StatisticsData& record, std::string_view uptime) {
  const auto seconds = linuxos::unsignedInteger(uptime.substr(0, uptime.find('.')));
  if (!seconds) return;
  record.setUptime(Number::ofUInt64(*seconds));
  record.setUptimeText(Text(durationText(*seconds)));
}

using SetNumber = void (StatisticsData::*)(Number);
using SetText = void (StatisticsData::*)(Text);

void fillMemory(StatisticsData& record, const MemoryTable& memory) {
  const uint64_t total = memory["MemTotal"];
  if (total == 0) return;
  const uint64_t free = memory["MemFree"];
  const uint64_t inactive = memory["Inactive"];
  const uint64_t wired =
      memory["Unevictable"] + memory["SUnreclaim"] + memory["KernelStack"] + memory["PageTables"];
  const struct {
    uint64_t bytes;
    SetNumber setNumber;
    SetText setText;
  } rows[] = {
      {free, &StatisticsData::setSummary_memoryFree, &StatisticsData::setSummary_memoryFreeText},
      {without(total, memory["MemAvailable"]), &StatisticsData::setSummary_memoryUsed,
       &StatisticsData::setSummary_memoryUsedText},
      {inactive, &StatisticsData::setSummary_memoryInactive,
       &StatisticsData::setSummary_memoryInactiveText},
      {wired, &StatisticsData::setSummary_memoryWired, &StatisticsData::setSummary_memoryWiredText},
      {without(total, free + inactive + wired), &StatisticsData::setSummary_memoryOther,
       &StatisticsData::setSummary_memoryOtherText},
      {total, &StatisticsData::setSummary_memoryTotal, &StatisticsData::setSummary_memoryTotalText},
  };
  for (const auto& row : rows) {
    (record.*row.setNumber)(Number::ofUInt64(row.bytes));
    (record.*row.setText)(Text(foundation::byteCountText(static_cast<int64_t>(row.bytes),
                                                         foundation::ByteCountStyle::file)));
  }
}

}  // namespace

void fillComputer(StatisticsData& record, const LinuxRoots& roots,
                  const HalvermonteSensorsEngine& engine) {
  record.setModelName(Text(linuxos::modelName(SystemCalls::real(), roots.sys)));
  record.setModelIdentifier(Text(modelIdentifier(roots.sys)));
  record.setProcessorName(engine.askSytemInfoForProcessorName());
  record.setSummary_cpuCores(Number::ofInt32(engine.physicalCores()));
  const int32_t logical = processorsIn(
      linuxos::wordingOf(SystemCalls::real(), roots.sys + "/devices/system/cpu/online"));
  if (logical > 0) record.setSummary_cpuLogicalCores(Number::ofInt32(logical));
}

HostUsage::HostUsage(const std::string& proc)
    : uptime_(SystemCalls::real(), proc + "/uptime"),
      memory_(SystemCalls::real(), proc + "/meminfo") {}

void HostUsage::fill(StatisticsData& record) {
  std::array<char, linuxos::kAttributeBound> buffer;
  fillUptime(record, uptime_.read(buffer));
  fillMemory(record, MemoryTable(memory_.read(buffer)));
}

}  // namespace halvermonte
