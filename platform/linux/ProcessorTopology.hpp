// The processors' places: packages, dies and cores.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

class ProcessorTopology {
 public:
  /// Empty if the kernel tells nothing about its processors.
  ProcessorTopology() = default;
  ProcessorTopology(SystemCalls& calls, const std::string& sys);

  /// 0 if unknown.
  size_t packages() const;
  /// The package of a die, both counted from 0: the dies of all packages are counted on. If the die
  /// is unknown, each package has one.
  size_t packageOfDie(size_t die) const;

  struct Core {
    bool isEfficient = false;  ///< a small core of a hybrid processor
    size_t place = 0;          ///< among the package's cores of its kind, from 0
  };
  /// The core that the kernel calls `number` in the package. Numbers have gaps. Absent if unknown.
  std::optional<Core> core(size_t package, int64_t number) const;

 private:
  struct Processor {
    int64_t package = 0, die = 0, core = 0;
    bool isEfficient = false;
  };

  std::vector<int64_t> packageNumbers() const;

  std::vector<Processor> processors_;
};

}  // namespace halvermonte::linuxos
