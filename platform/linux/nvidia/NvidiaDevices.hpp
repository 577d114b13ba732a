// The graphics devices that NVIDIA's own driver runs. The driver offers no hardware monitoring.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/Source.hpp"
#include "platform/linux/nvidia/ManagementLibrary.hpp"

namespace halvermonte::linuxos {

/// Not thread-safe.
class NvidiaDevices {
 public:
  /// `library` is the management library's path, or "" if it may not be asked because the devices
  /// are those of another computer.
  NvidiaDevices(SystemCalls& calls, std::string sys, std::string library);
  ~NvidiaDevices();

  /// Looks for the devices, and makes a chip of each, in no particular order. Wakes none.
  std::vector<Chip> findChips();

  /// The source of a channel of one of these chips. Null for any other chip. The source may outlive
  /// this object.
  std::unique_ptr<Source> makeSource(const Chip& chip, const Channel& channel) const;

 private:
  class Device;
  class DeviceSource;
  using Devices = std::map<std::string, std::shared_ptr<Device>>;  ///< by folder

  SystemCalls& calls_;
  const std::string sys_;
  const std::shared_ptr<ManagementLibrary> library_;
  Devices devices_;
};

}  // namespace halvermonte::linuxos
