// The controller that answers SMC keys from the kernel's hardware monitoring.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/FolderWatch.hpp"
#include "platform/linux/Inventory.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/KeyAssignment.hpp"
#include "platform/linux/hwmon/Sensor.hpp"
#include "platform/linux/hwmon/SensorTable.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte::linuxos {

/// Temperatures and fan speeds are of type "flt ", their names records of type "{fds". Info comes
/// from memory; bytes are read from the kernel at most once a pass. Not locked.
class HwmonController {
 public:
  HwmonController(SystemCalls& calls, std::string sys, bool driveTemperatures);

  /// Begins a pass; looks at the computer's chips again where some came or went.
  void open();
  SMCKeyInfo info(uint32_t key) const;
  /// No reading: an error code; a fan's speed is then -1, as no reading of it would be taken for 0.
  SMCKeyBytes bytes(uint32_t key);

  /// Every sensor, in the order of the hardware. Begins a pass, and reads also what has no key,
  /// except where that is asleep or was not asked for.
  SensorInventory inventory();
  /// How many sensors have keys.
  size_t sensors() const;
  /// How many sensors were refused when they were last asked for by their keys.
  size_t deniedSensors() const;

 private:
  enum class Kind : uint8_t { value, fanSpeed, fanName, fanCount };
  struct Entry {
    uint32_t key;
    Kind kind;
    size_t index;  ///< of the sensor or fan
  };

  void rescan();
  std::map<std::string, Sensor::Memory> memoriesByIdentity() const;
  void findSensors();
  void addSensor(const FoundSensor& found);
  void addFanEntries();
  Sensor::Traits makeTraits(const FoundSensor& found);
  std::vector<Gate*> addGates(const FoundSensor& found, ReadPolicy policy);
  Gate* findOrAddGate(const std::string& path, Gate::Kind kind);
  bool isTurning(const FoundSensor& fan);
  const Entry* find(uint32_t key) const;
  SensorListing makeListing(const FoundSensor& found);
  void readInto(SensorListing& listing, Sensor& sensor) const;

  SystemCalls& calls_;
  std::string sys_;
  bool driveTemperatures_;
  FolderWatch watch_;
  bool rescansAgain_ = false;
  Pass pass_;
  std::vector<Chip> chips_;
  std::vector<FoundSensor> found_;
  std::deque<Gate> gates_;  ///< sensors point to them
  std::vector<Sensor> sensors_;
  std::vector<std::string> fanNames_;
  std::vector<Entry> entries_;  ///< by key
};

}  // namespace halvermonte::linuxos
