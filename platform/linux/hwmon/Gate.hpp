// Files that say whether sensors may be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/KeptFile.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// A channel's own file. It may be as slow as the channel's reading.
class Gate {
 public:
  enum class Kind { fault, enable };

  Gate(SystemCalls& calls, std::string path, Kind kind)
      : file_(calls, std::move(path)), kind_(kind) {}

  /// Reads the file. Returns true if the sensor may be read.
  bool checkOpen();
  /// Why the sensor is not read if the gate is closed. A literal.
  std::string_view reason() const;
  /// Looks for the file again if it has gone.
  void reopenIfGone();

 private:
  KeptFile file_;
  Kind kind_;
};

/// A device's power state. The kernel answers from memory and wakes nothing.
class PowerGate {
 public:
  PowerGate(SystemCalls& calls, std::string path) : file_(calls, std::move(path)) {}

  const std::string& path() const noexcept { return file_.path(); }

  /// Returns true if the device is awake. Reads the file once a pass.
  bool checkOpen(uint64_t pass);

 private:
  KeptFile file_;
  uint64_t pass_ = 0;
  bool isOpen_ = false;
};

}  // namespace halvermonte::linuxos
