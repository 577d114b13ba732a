#include <set>
#include <string>

#include "platform/linux/Files.hpp"
#include "platform/linux/Processor.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// The list of processors that share a core with the one in that folder; "" where it is offline.
std::string coreOf(SystemCalls& calls, const std::string& processor) {
  if (wordingOf(calls, processor + "/online") == "0") return "";
  const std::string list = wordingOf(calls, processor + "/topology/core_cpus_list");
  // Kernels before 5.3 have the older name alone.
  return list.empty() ? wordingOf(calls, processor + "/topology/thread_siblings_list") : list;
}

/// Core numbers are of no use here: on Apple silicon they start again in each cluster.
size_t coresByTopology(SystemCalls& calls, const std::string& processors) {
  std::set<std::string> cores;
  for (const std::string& name : namesIn(calls, processors).value_or(std::vector<std::string>())) {
    if (!isNumbered(name, "cpu")) continue;
    const std::string core = coreOf(calls, processors + "/" + name);
    if (!core.empty()) cores.insert(core);
  }
  return cores.size();
}

/// Each processor has a paragraph that begins with its number; x86 tells the package and the core
/// in it.
size_t coresByTable(std::string_view table) {
  std::vector<std::string> cores;
  for (const std::string_view line : split(table, '\n')) {
    if (const auto number = field(line, "processor", ':'); number && unsignedInteger(*number)) {
      cores.push_back("processor " + std::string(*number));
    }
    if (cores.empty()) continue;
    if (const auto package = field(line, "physical id", ':')) cores.back() = *package;
    if (const auto core = field(line, "core id", ':')) cores.back() += "." + std::string(*core);
  }
  return std::set<std::string>(cores.begin(), cores.end()).size();
}

}  // namespace

std::optional<int64_t> physicalCores(SystemCalls& calls, const std::string& sys,
                                     const std::string& proc) {
  size_t count = coresByTopology(calls, sys + "/devices/system/cpu");
  if (count == 0) count = coresByTable(textOf(calls, proc + "/cpuinfo", kTableBound).value_or(""));
  return count == 0 ? std::nullopt : std::optional(static_cast<int64_t>(count));
}

}  // namespace halvermonte::linuxos
