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
    if (!first || !last || *first < 0) continue;
    for (int64_t each = *first; each <= std::min(*last, kMost); ++each) numbers.insert(each);
  }
  return numbers;
}

}  // namespace

ProcessorTopology::ProcessorTopology(SystemCalls& calls, const std::string& sys) {
  const std::set<int64_t> efficient =
      numbersIn(trimmedTextOf(calls, sys + "/devices/cpu_atom/cpus"));
  const std::string folder = sys + "/devices/system/cpu";
  for (const std::string& name : namesOrNone(calls, folder)) {
    if (!isNumbered(name, "cpu")) continue;
    const std::string topology = folder + "/" + name + "/topology/";
    const auto package = integer(trimmedTextOf(calls, topology + "physical_package_id"));
    if (!package) continue;  // it is offline
    processors_.push_back({.package = *package,
                           .die = integer(trimmedTextOf(calls, topology + "die_id")).value_or(0),
                           .core = integer(trimmedTextOf(calls, topology + "core_id")).value_or(-1),
                           .isEfficient = efficient.contains(*integer(name.substr(3)))});
  }
}

std::vector<int64_t> ProcessorTopology::packageNumbers() const {
  std::set<int64_t> numbers;
  for (const Processor& processor : processors_) numbers.insert(processor.package);
  return {numbers.begin(), numbers.end()};
}

size_t ProcessorTopology::packages() const { return packageNumbers().size(); }

size_t ProcessorTopology::packageOfDie(size_t die) const {
  std::set<std::pair<int64_t, int64_t>> dies;
  for (const Processor& processor : processors_) dies.insert({processor.package, processor.die});
  if (die >= dies.size()) return die;
  const int64_t number = std::next(dies.begin(), static_cast<ptrdiff_t>(die))->first;
  const std::vector<int64_t> packages = packageNumbers();
  return static_cast<size_t>(std::find(packages.begin(), packages.end(), number) -
                             packages.begin());
}

std::optional<ProcessorTopology::Core> ProcessorTopology::core(size_t package,
                                                               int64_t number) const {
  const std::vector<int64_t> packages = packageNumbers();
  if (package >= packages.size()) return std::nullopt;
  const auto isMeant = [&](const Processor& each) {
    return each.package == packages[package] && each.core == number;
  };
  const auto found = std::find_if(processors_.begin(), processors_.end(), isMeant);
  if (found == processors_.end()) return std::nullopt;
  std::set<int64_t> before;
  for (const Processor& each : processors_) {
    const bool isAlike = each.package == found->package && each.isEfficient == found->isEfficient;
    if (isAlike && each.core < number) before.insert(each.core);
  }
  return Core{found->isEfficient, before.size()};
}

}  // namespace halvermonte::linuxos
