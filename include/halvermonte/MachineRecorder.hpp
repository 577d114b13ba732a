// Writes down what a machine answers, as a machine file that answers the same. Not on macOS.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"

namespace halvermonte {

struct Recording;

/// Answers as the machine does, from one thread, and keeps each answer under the tick of the time.
/// The clock stands still within a tick, as it does in a machine file. The first tick also has the
/// other keys that the controller lists, which show what sensors a new computer has: those of
/// numbers with their data, those of texts without.
class HALVERMONTE_EXPORT MachineRecorder : public MachineWrapper {
 public:
  /// Whether the recording may tell the computer's host name.
  enum class HostName { kept, leftOut };

  /// REQUIRES: the machine outlives the recorder.
  MachineRecorder(Machine& machine, HostName hostName);
  ~MachineRecorder() override;

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
  std::unique_ptr<Recording> recording_;
};

}  // namespace halvermonte
