#include "platform/linux/HostFacts.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "platform/linux/Files.hpp"
#include "platform/linux/HostName.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

std::optional<std::string> unlessEmpty(std::string text) {
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

/// Apple silicon has a device tree, other computers a DMI table.
std::optional<std::string> modelIdentifier(SystemCalls& calls, const std::string& sys) {
  const auto compatible = textOf(calls, sys + "/firmware/devicetree/base/compatible");
  if (compatible) return compatible->substr(0, compatible->find('\0'));
  return unlessEmpty(trimmedTextOf(calls, sys + "/class/dmi/id/product_name"));
}

/// How many processors a piece of a list names, such as "3" or "0-3"; absent if it is garbled.
std::optional<int32_t> processorsInRange(std::string_view range) {
  constexpr uint64_t kMost = 1 << 20;
  const size_t dash = range.find('-');
  const auto first = unsignedInteger(range.substr(0, dash));
  const auto last = dash == range.npos ? first : unsignedInteger(range.substr(dash + 1));
  if (!first || !last || *last < *first || *last > kMost) return std::nullopt;
  return static_cast<int32_t>(*last - *first) + 1;
}

/// How many processors a list such as "0-3,6" names; absent if it is garbled.
std::optional<int32_t> processorsInList(std::string_view list) {
  int32_t count = 0;
  for (const std::string_view range : split(list, ',')) {
    const std::optional<int32_t> processors = processorsInRange(range);
    if (!processors) return std::nullopt;
    count += *processors;
  }
  return count;
}

/// Whole seconds; the file reads "273700.10 500.2".
std::optional<uint64_t> uptimeOf(std::string_view file) {
  return unsignedInteger(file.substr(0, file.find('.')));
}

/// A line of the table in bytes, such as "MemFree:        23498680 kB"; 0 if there is none.
uint64_t bytesOf(std::string_view table, std::string_view name) {
  const auto line = words(field(table, name, ':').value_or(""));
  return line.empty() ? 0 : unsignedInteger(line.front()).value_or(0) * 1024;
}

uint64_t without(uint64_t whole, uint64_t part) { return whole > part ? whole - part : 0; }

std::optional<MemoryFacts> memoryOf(std::string_view table) {
  MemoryFacts memory;
  memory.total = bytesOf(table, "MemTotal");
  if (memory.total == 0) return std::nullopt;
  memory.free = bytesOf(table, "MemFree");
  memory.used = without(memory.total, bytesOf(table, "MemAvailable"));
  memory.inactive = bytesOf(table, "Inactive");
  for (const char* name : {"Unevictable", "SUnreclaim", "KernelStack", "PageTables"}) {
    memory.wired += bytesOf(table, name);
  }
  memory.other = without(memory.total, memory.free + memory.inactive + memory.wired);
  return memory;
}

}  // namespace

HostFactsReader::HostFactsReader(SystemCalls& calls, std::string sys, const std::string& proc)
    : calls_(calls),
      sys_(std::move(sys)),
      uptime_(calls, proc + "/uptime"),
      memory_(calls, proc + "/meminfo") {}

HostFacts HostFactsReader::lastingFacts() const {
  HostFacts facts;
  facts.modelName = unlessEmpty(modelName(calls_, sys_));
  facts.modelIdentifier = modelIdentifier(calls_, sys_);
  facts.logicalCores = processorsInList(trimmedTextOf(calls_, sys_ + "/devices/system/cpu/online"));
  return facts;
}

HostFacts HostFactsReader::read() {
  if (!lasting_) lasting_ = lastingFacts();
  HostFacts facts = *lasting_;
  std::array<char, kAttributeBound> buffer;
  facts.uptime = uptimeOf(uptime_.read(buffer));
  facts.memory = memoryOf(memory_.read(buffer));
  return facts;
}

}  // namespace halvermonte::linuxos
