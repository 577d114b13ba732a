// Writes down what a machine answers, as a machine file that answers the same.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/SensorNames.hpp"
#include "platform/portable/Machine.hpp"

namespace halvermonte {

/// What a machine answered in the course of one tick. Absent: it was not asked.
struct RecordedTick {
  struct Key {
    std::optional<SMCKeyInfo> info;
    std::optional<SMCKeyBytes> data;
  };

  std::optional<double> time;
  std::optional<SMCService> service;
  std::optional<uint32_t> openCode;
  bool answersWideCalls = true;
  std::map<uint32_t, Key> keys;
  /// By HIDSensorKind; null if there is no list.
  std::array<std::optional<std::shared_ptr<const HIDServices>>, 3> hid;
  std::vector<Drive> drives;
  std::optional<std::string> drivesRaise;
};

/// Answers as the machine does, from one thread, and keeps each answer under the tick of the time.
/// The clock stands still within a tick, as it does in a machine file.
class MachineRecorder : public MachineWrapper {
 public:
  /// Whether the recording may tell the computer's host name.
  enum class HostName { kept, leftOut };

  MachineRecorder(Machine& machine, HostName hostName);

  /// The machine file of all ticks so far. REQUIRES: that nothing is asked afterwards.
  std::string machineFile();

  SMCService smcService() override;
  uint32_t openSMC() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::vector<SensorName> sensorNames() override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override;
  /// Ends the recorded tick, then moves the machine on.
  bool nextTick() override;
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;

 private:
  RecordedTick& tick() { return ticks_.back(); }
  /// Asks what a pass does not, or not always, so that the recording has it.
  void complete();

  HostName hostName_;
  std::optional<size_t> driveCount_;
  std::map<std::string, std::optional<std::string>> commands_;
  std::map<std::string, int64_t> kernelVariables_;
  std::vector<SensorName> sensorNames_;
  std::vector<RecordedTick> ticks_{1};
};

}  // namespace halvermonte
