// A controller whose SMC keys are read from the kernel's hardware monitoring.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "platform/linux/FolderWatch.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/KeyAssignment.hpp"
#include "platform/linux/hwmon/Sensor.hpp"
#include "platform/linux/hwmon/SensorTable.hpp"
#include "platform/portable/Inventory.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte::linuxos {

/// Temperatures and fan speeds have the type "flt ", fan names the type "{fds". Info comes from
/// memory. Bytes are read from the kernel at most once a pass. Not thread-safe.
class HwmonController {
 public:
  HwmonController(SystemCalls& calls, std::string sys, bool driveTemperatures);

  /// Begins a pass. Scans the computer's chips again if some were added or removed.
  void open();
  SMCKeyInfo info(uint32_t key) const;
  /// Without a reading: an error code, except fan speeds, which give -1 because the engine treats a
  /// missing speed as 0.
  SMCKeyBytes bytes(uint32_t key);

  /// Every sensor, in the order of the hardware. Begins a pass, and also reads sensors without a
  /// key, unless their device is asleep or they are read only on request.
  SensorInventory inventory();
  /// The number of sensors that have keys.
  size_t sensors() const;
  /// The number of sensors with keys that the user was not allowed to read at the last attempt.
  size_t deniedSensors() const;

 private:
  enum class Kind : uint8_t { value, fanSpeed, fanName, fanCount };
  struct Entry {
    uint32_t key;
    Kind kind;
    size_t index;  ///< of the sensor; of the fan for a name
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
  std::deque<Gate> gates_;  ///< a deque, as sensors point to its elements
  std::vector<Sensor> sensors_;
  std::vector<std::string> fanNames_;
  std::vector<Entry> entries_;  ///< sorted by key
};

}  // namespace halvermonte::linuxos
