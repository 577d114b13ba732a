// Assigns keys and names to temperatures.
#pragma once

#include <string>
#include <vector>

#include "catalogue/BuiltInNames.hpp"
#include "catalogue/Tables.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/DeviceTreeKeys.hpp"
#include "platform/linux/hwmon/NameTable.hpp"

namespace halvermonte::linuxos {

/// A chip's channel, and the key that it is read by. REQUIRES: the chips outlive it.
struct FoundSensor {
  const Chip* chip;
  const Channel* channel;
  std::string identity = "";  ///< the same after a reboot, whatever other hardware there is
  std::string key = "";       ///< four characters; "" if it has none
  std::string alias = "";     ///< a built-in key that reads it, too, and shows nothing more
  std::string name = "";      ///< of the key's reading, if that is shown
  bool isBuiltIn = false;     ///< whether the engine's own catalogue has the key
  std::string reason = "";    ///< why it has no key

  std::string path() const { return chip->folder + "/" + channel->file; }
};

/// All channels of the chips, without keys.
std::vector<FoundSensor> sensorsOf(const std::vector<Chip>& chips);

/// Whether it belongs to a Mac's own controller.
bool isOfController(const FoundSensor& sensor);

/// How to read its driver.
ReadPolicy readPolicyOf(const FoundSensor& sensor);

/// Whether the sensor may be read. If its policy is onRequest, only the program decides.
bool mayRead(const FoundSensor& sensor, bool driveTemperatures);

struct AssignmentFacts {
  std::string sys;
  std::vector<DeviceTreeSensor> deviceTree;
  std::vector<NamedKey> builtInNames;  ///< of the keys that a pass reads, on this processor
  bool driveTemperatures = false;
};

/// Gives every temperature a key and a name. A key follows from the sensor's identity alone. A
/// Mac's controller keeps its own keys, and the sensors of processors have built-in ones.
void assignKeys(SystemCalls& calls, const std::vector<Chip>& chips,
                std::vector<FoundSensor>& sensors, const AssignmentFacts& facts);

}  // namespace halvermonte::linuxos
