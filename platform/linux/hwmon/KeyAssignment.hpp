// Which key each sensor is read by.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/DeviceTreeKeys.hpp"
#include "platform/linux/hwmon/SensorTable.hpp"

namespace halvermonte::linuxos {

/// A chip's channel, and what is made of it. Chips outlive it.
struct FoundSensor {
  const Chip* chip;
  const Channel* channel;
  std::string key = "";     ///< four characters; "" where it has none
  std::string reason = "";  ///< why it has none
  int lowest = 0;           ///< of a temperature with a key: degrees
  int highest = 0;

  std::string path() const { return chip->folder + "/" + channel->file; }
};

/// The chips' channels one by one.
std::vector<FoundSensor> sensorsOf(const std::vector<Chip>& chips);

/// Whether it is one of a Mac's own controller.
bool isOfController(const FoundSensor& sensor);

/// How its driver wants to be read.
ReadPolicy readPolicyOf(const FoundSensor& sensor);

struct AssignmentFacts {
  std::vector<DeviceTreeSensor> deviceTree;
  size_t packages = 0;  ///< processor packages; 0 where nothing tells
  bool driveTemperatures = false;
};

/// Gives keys to temperatures by the table, and a Mac's controller its own. Nothing decides but the
/// sensors' order, drivers and labels.
void assignKeys(std::vector<FoundSensor>& sensors, const AssignmentFacts& facts);

}  // namespace halvermonte::linuxos
