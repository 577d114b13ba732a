#include "platform/linux/hwmon/DeviceTreeKeys.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

using Names = std::vector<std::string>;

constexpr auto kNodes = std::to_array<std::pair<std::string_view, Quantity>>({
    {"current-", Quantity::current},
    {"fan-", Quantity::fan},
    {"power-", Quantity::power},
    {"temperature-", Quantity::temperature},
    {"voltage-", Quantity::voltage},
});

/// The folders of the controller's sensors, such as soc/smc@23e400000/hwmon.
Names sensorFolders(SystemCalls& calls, const std::string& sys) {
  const std::string root = sys + "/firmware/devicetree/base";
  Names folders;
  for (const std::string& bus : namesOrNone(calls, root)) {
    if (!bus.starts_with("soc")) continue;
    for (const std::string& node : namesOrNone(calls, root + "/" + bus)) {
      if (node.starts_with("smc@")) folders.push_back(root + "/" + bus + "/" + node + "/hwmon");
    }
  }
  return folders;
}

bool isLabelledAlike(const DeviceTreeSensor& sensor, const Channel& channel) {
  constexpr size_t kLongestLabel = 31;  // the driver cuts it there
  const std::string_view label = trimmed(channel.label);
  return sensor.quantity == channel.quantity && !label.empty() &&
         trimmed(std::string_view(sensor.label).substr(0, kLongestLabel)) == label;
}

auto partners(const std::vector<DeviceTreeSensor>& sensors, const Channel& channel) {
  return std::count_if(sensors.begin(), sensors.end(), [&](const DeviceTreeSensor& sensor) {
    return isLabelledAlike(sensor, channel);
  });
}

auto partners(const DeviceTreeSensor& sensor, const Chip& chip) {
  return std::count_if(chip.channels.begin(), chip.channels.end(),
                       [&](const Channel& channel) { return isLabelledAlike(sensor, channel); });
}

/// REQUIRES: a sensor with the channel's label.
std::string keyByLabel(const std::vector<DeviceTreeSensor>& sensors, const Chip& chip,
                       const Channel& channel) {
  const auto same = std::find_if(
      sensors.begin(), sensors.end(),
      [&](const DeviceTreeSensor& sensor) { return isLabelledAlike(sensor, channel); });
  const bool isUnique = partners(sensors, channel) == 1 && partners(*same, chip) == 1;
  return isUnique ? same->key : "";
}

/// The key of the only sensor without a channel, if this is the only channel without a sensor.
std::string keyOfLastPair(const std::vector<DeviceTreeSensor>& sensors, const Chip& chip,
                          const Channel& channel) {
  const auto isLeftSensor = [&](const DeviceTreeSensor& sensor) {
    return sensor.quantity == channel.quantity && partners(sensor, chip) == 0;
  };
  const auto isLeftChannel = [&](const Channel& other) {
    return other.quantity == channel.quantity && partners(sensors, other) == 0;
  };
  const bool isTheLastPair =
      std::count_if(sensors.begin(), sensors.end(), isLeftSensor) == 1 &&
      std::count_if(chip.channels.begin(), chip.channels.end(), isLeftChannel) == 1;
  return isTheLastPair ? std::find_if(sensors.begin(), sensors.end(), isLeftSensor)->key : "";
}

}  // namespace

std::vector<DeviceTreeSensor> deviceTreeSensors(SystemCalls& calls, const std::string& sys) {
  std::vector<DeviceTreeSensor> sensors;
  for (const std::string& folder : sensorFolders(calls, sys)) {
    for (const std::string& node : namesOrNone(calls, folder)) {
      const auto* const kind = std::find_if(kNodes.begin(), kNodes.end(), [&](const auto& each) {
        return node.starts_with(each.first);
      });
      const std::string place = folder + "/" + node;
      const std::string key = trimmedTextOf(calls, place + "/apple,key-id");
      if (kind == kNodes.end() || key.size() != 4) continue;
      sensors.push_back({kind->second, firstLine(trimmedTextOf(calls, place + "/label")), key});
    }
  }
  return sensors;
}

std::string keyOf(const std::vector<DeviceTreeSensor>& sensors, const Chip& chip,
                  const Channel& channel) {
  return partners(sensors, channel) > 0 ? keyByLabel(sensors, chip, channel)
                                        : keyOfLastPair(sensors, chip, channel);
}

}  // namespace halvermonte::linuxos
