// Assigns keys to sensors.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/DeviceTreeKeys.hpp"
#include "platform/linux/hwmon/SensorTable.hpp"

namespace halvermonte::linuxos {

/// A chip's channel, and the key that it is read by. REQUIRES: the chips outlive it.
struct FoundSensor {
  const Chip* chip;
  const Channel* channel;
  std::string key = "";     ///< four characters; "" if it has none
  std::string reason = "";  ///< why it has none
  int lowest = 0;           ///< in degrees; only for a temperature with a key
  int highest = 0;

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
  std::vector<DeviceTreeSensor> deviceTree;
  size_t packages = 0;  ///< processor packages; 0 if unknown
  bool driveTemperatures = false;
};

/// Assigns the table's keys to temperatures, and a Mac's controller's own keys to its sensors. The
/// result depends only on the sensors' order, drivers and labels.
void assignKeys(std::vector<FoundSensor>& sensors, const AssignmentFacts& facts);

}  // namespace halvermonte::linuxos
