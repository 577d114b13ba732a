#include "platform/linux/ProcessorCores.hpp"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// The list of processors that share a core with the one in that folder. "" if it is offline.
std::string coreOf(SystemCalls& calls, const std::string& processor) {
  if (trimmedTextOf(calls, processor + "/online") == "0") return "";
  const std::string list = trimmedTextOf(calls, processor + "/topology/core_cpus_list");
  // Kernels before 5.3 have only the older name.
  return list.empty() ? trimmedTextOf(calls, processor + "/topology/thread_siblings_list") : list;
}

/// Counts the different cores of the processors.
size_t coresByTopology(SystemCalls& calls, const std::string& sys) {
  const std::string processors = sys + "/devices/system/cpu";
  std::set<std::string> cores;
  for (const std::string& name : namesOrNone(calls, processors)) {
    // Core numbers do not help: on Apple silicon each cluster counts from 0.
    if (isNumbered(name, "cpu")) cores.insert(coreOf(calls, processors + "/" + name));
  }
  cores.erase("");
  return cores.size();
}

/// Counts the cores in the text of /proc/cpuinfo. Each processor has a paragraph that begins with
/// its number. On x86 the paragraph also holds the package and the core.
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
  size_t count = coresByTopology(calls, sys);
  if (count == 0) count = coresByTable(textOf(calls, proc + "/cpuinfo", kTableBound).value_or(""));
  return count == 0 ? std::nullopt : std::optional(static_cast<int64_t>(count));
}

}  // namespace halvermonte::linuxos
