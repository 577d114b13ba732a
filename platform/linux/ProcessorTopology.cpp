#include "platform/linux/ProcessorTopology.hpp"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// The numbers in a list such as "0-7,16".
std::set<int64_t> numbersIn(std::string_view list) {
  constexpr int64_t kMost = 1 << 16;
  std::set<int64_t> numbers;
  for (const std::string_view range : split(list, ',')) {
    const size_t dash = range.find('-');
    const auto first = integer(range.substr(0, dash));
    const auto last = dash == range.npos ? first : integer(range.substr(dash + 1));
    if (!first || !last) continue;
    for (int64_t each = *first; each <= std::min(*last, kMost); ++each) numbers.insert(each);
  }
  return numbers;
}

struct Processor {
  int64_t package = 0, die = 0, core = 0;
  bool isEfficient = false;
};

std::vector<Processor> processorsIn(SystemCalls& calls, const std::string& sys) {
  const std::set<int64_t> efficient =
      numbersIn(trimmedTextOf(calls, sys + "/devices/cpu_atom/cpus"));
  const std::string folder = sys + "/devices/system/cpu";
  std::vector<Processor> processors;
  for (const std::string& name : namesOrNone(calls, folder)) {
    if (!isNumbered(name, "cpu")) continue;
    const std::string topology = folder + "/" + name + "/topology/";
    const auto package = integer(trimmedTextOf(calls, topology + "physical_package_id"));
    if (!package) continue;  // it is offline
    processors.push_back({.package = *package,
                          .die = integer(trimmedTextOf(calls, topology + "die_id")).value_or(0),
                          .core = integer(trimmedTextOf(calls, topology + "core_id")).value_or(-1),
                          .isEfficient = efficient.contains(*integer(name.substr(3)))});
  }
  return processors;
}

}  // namespace

ProcessorTopology::ProcessorTopology(SystemCalls& calls, const std::string& sys) {
  std::map<int64_t, std::map<int64_t, Core>> coresByPackage;
  std::map<int64_t, std::set<int64_t>> diesByPackage;
  for (const Processor& each : processorsIn(calls, sys)) {
    coresByPackage[each.package][each.core].isEfficient = each.isEfficient;
    diesByPackage[each.package].insert(each.die);
  }
  for (const auto& [package, cores] : coresByPackage) {
    size_t counts[2] = {0, 0};  // of large and small cores
    for (auto [number, core] : cores) {
      core.place = counts[core.isEfficient ? 1 : 0]++;
      cores_[{packages_, number}] = core;
    }
    packagesOfDies_.insert(packagesOfDies_.end(), diesByPackage[package].size(), packages_);
    ++packages_;
  }
}

size_t ProcessorTopology::packageOfDie(size_t die) const {
  return die < packagesOfDies_.size() ? packagesOfDies_[die] : die;
}

bool ProcessorTopology::isFirstOfPackage(size_t die) const {
  return die == 0 || packageOfDie(die - 1) != packageOfDie(die);
}

std::optional<ProcessorTopology::Core> ProcessorTopology::core(size_t package,
                                                               int64_t number) const {
  const auto found = cores_.find({package, number});
  return found == cores_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace halvermonte::linuxos
