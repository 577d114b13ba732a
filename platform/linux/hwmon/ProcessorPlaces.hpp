// Where a processor's sensor sits: socket, die and core.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/linux/ProcessorTopology.hpp"
#include "platform/linux/hwmon/Chips.hpp"

namespace halvermonte::linuxos {

/// The places of one chip of a processor, as words. They follow from the hardware, not from the
/// order in which chips were found.
class ProcessorPlaces {
 public:
  /// REQUIRES: all of them outlive it.
  ProcessorPlaces(const ProcessorTopology& topology, const std::vector<Chip>& chips,
                  const Chip& chip)
      : topology_(topology), chips_(chips), chip_(chip) {}

  /// "CPU 1" for the first socket.
  std::string socket() const;
  /// "CPU" for the first socket, "CPU 2" for the second.
  std::string processor() const;
  /// "Package" or, if the socket has several dies with a chip each, "Die 2".
  std::string die() const;
  /// Whether it is the only die of its package, or the first one.
  bool isFirstDie() const { return node().die == 0; }
  /// "Core 3", or "Efficiency Core 3" for a small core of a hybrid processor.
  std::string core(const Channel& channel) const;

 private:
  struct Node {
    size_t package = 0, die = 0, diesPerPackage = 1;
  };

  Node node() const;
  Node nodeOfAMD() const;
  bool knowsAllCores(size_t package) const;
  size_t rankInChip(int64_t number) const;

  const ProcessorTopology& topology_;
  const std::vector<Chip>& chips_;
  const Chip& chip_;
};

}  // namespace halvermonte::linuxos
