// A controller whose SMC keys are read from the kernel's hardware monitoring, and from NVIDIA's
// library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "catalogue/Tables.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/SensorNames.hpp"
#include "platform/linux/FolderWatch.hpp"
#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Chips.hpp"
#include "platform/linux/hwmon/Gate.hpp"
#include "platform/linux/hwmon/KeyAssignment.hpp"
#include "platform/linux/hwmon/Sensor.hpp"
#include "platform/linux/hwmon/Source.hpp"
#include "platform/linux/hwmon/Trial.hpp"
#include "platform/linux/nvidia/NvidiaDevices.hpp"

namespace halvermonte::linuxos {

struct HwmonOptions {
  std::string sys, proc;  ///< the folders of the kernel's files
  bool driveTemperatures = false;
  std::string managementLibrary = "";  ///< NVIDIA's; "" if it may not be asked
};

/// Temperatures and fan speeds have the type "flt ", fan names the type "{fds". Info comes from
/// memory. Bytes are read from the kernel at most once a pass. Sensors of unknown speed and slow
/// ones are read on threads, for which neither a pass nor the destructor waits. Not thread-safe.
class HwmonController {
 public:
  HwmonController(SystemCalls& calls, HwmonOptions options);

  /// Begins a pass. Scans the computer's chips again if some were added or removed, and reads
  /// sensors that were never read.
  void open();
  /// The keys that the engine's catalogue lacks, with their names, in the order of the hardware.
  /// Begins a pass that reads nothing.
  std::vector<SensorName> names();
  SMCKeyInfo info(uint32_t key) const;
  /// Without a reading: an error code, except fan speeds, which give -1 because the engine treats a
  /// missing speed as 0.
  SMCKeyBytes bytes(uint32_t key);

  /// Every sensor, in the order of the hardware. Begins a pass, and also reads sensors without a
  /// key, unless their device is asleep or they are read only on request.
  SensorInventory inventory();
  /// The number of sensors with keys that the user was not allowed to read at the last attempt.
  size_t refusedSensors() const;

 private:
  enum class Kind : uint8_t { value, fanSpeed, fanName, fanCount };
  struct Entry {
    uint32_t key;
    Kind kind;
    size_t index;  ///< of the sensor; of the fan for a name
  };

  struct KnownSensor {
    std::string identity;  ///< stays the same if the kernel gives the chip another number
    std::unique_ptr<Sensor> sensor;
  };
  using KnownSensors = std::map<std::string, KnownSensor>;  ///< by path

  void begin();
  void rescan();
  void findSensors();
  std::vector<NamedKey> namesOnThisProcessor() const;
  void findChips();
  void addSensor(const FoundSensor& found);
  void addFanEntries();
  Sensor& findOrAddSensor(const FoundSensor& found);
  KnownSensors::iterator findFormer(const std::string& path, const std::string& identity);
  std::unique_ptr<Source> makeSource(const FoundSensor& found);
  Sensor::Traits makeTraits(const FoundSensor& found);
  PowerGate* findOrAddPowerGate(const FoundSensor& found);
  bool isTurning(const FoundSensor& fan);
  /// Reads those of the sensors that were never read, as far as that does not take long.
  void tryOut(std::span<Sensor* const> sensors);
  /// Gives back the descriptors of sensors that were only listed. A slow one is kept, as another
  /// listing would otherwise start another thread for it.
  void forgetSensorsWithoutKeys();
  const Entry* find(uint32_t key) const;
  SensorListing makeListing(const FoundSensor& found, Sensor* sensor) const;

  SystemCalls& calls_;
  const HwmonOptions options_;
  FolderWatch watch_;
  NvidiaDevices nvidia_;
  bool rescansAgain_ = false;
  Pass pass_;
  std::vector<Chip> chips_;
  std::vector<FoundSensor> found_;
  std::deque<PowerGate> gates_;  ///< a deque, as sensors point to its elements
  KnownSensors sensors_;
  KnownSensors formerSensors_;  ///< during a scan, those of the scan before
  Trial trial_;
  std::vector<Sensor*> keyedSensors_;
  std::vector<std::string> fanNames_;
  std::vector<Entry> entries_;  ///< sorted by key
};

}  // namespace halvermonte::linuxos
