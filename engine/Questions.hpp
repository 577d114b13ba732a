// What an engine asks itself: two questions while it is made, one in each pass.
#pragma once

#include <cstdint>
#include <vector>

#include "halvermonte/Values.hpp"

namespace halvermonte {

/// Asks the engine's own functions. A face of the engine in another language overrides this, so
/// that a host's subclass there is asked.
class Questions {
 public:
  virtual ~Questions() = default;

  virtual Text processorName() const;
  virtual int32_t physicalCores() const;
  /// The readings of the HID event system's temperature sensors, in whole degrees.
  virtual std::vector<int32_t> thermalValues() const;
};

}  // namespace halvermonte
