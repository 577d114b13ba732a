// The processors' places: packages, dies and cores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Packages and dies are counted from 0, in the order of the kernel's numbers for them. Processors
/// that are offline are not known.
class ProcessorTopology {
 public:
  /// Empty if the kernel does not list its processors.
  ProcessorTopology(SystemCalls& calls, const std::string& sys);

  /// 0 if unknown.
  size_t packages() const noexcept { return packages_; }
  /// The package of a die, of which those of all packages are counted on. If the die is unknown,
  /// each package has one.
  size_t packageOfDie(size_t die) const;
  bool isFirstOfPackage(size_t die) const;

  struct Core {
    bool isEfficient = false;  ///< a small core of a hybrid processor
    size_t place = 0;          ///< among the package's cores of its kind, from 0
  };
  /// The core that the kernel calls `number` in the package. Numbers have gaps. Absent if unknown.
  std::optional<Core> core(size_t package, int64_t number) const;

 private:
  size_t packages_ = 0;
  std::vector<size_t> packagesOfDies_;
  std::map<std::pair<size_t, int64_t>, Core> cores_;  ///< by package and number
};

}  // namespace halvermonte::linuxos
