// SimulatedMachine: the computer that a machine file describes, so that a host can test itself
// against any computer. docs/machine-files.md is the format, and BundledMachines.hpp has six files
// that are built in. Not on macOS.
//
//   const auto machine = SimulatedMachine::fromFile("notebook.json");
//   ScopedMachine scope(*machine);
//   HalvermonteSensorsEngine engine;
//   engine.getSensorsInfo(record);  // the first tick
//   machine->nextTick();
//   engine.getSensorsInfo(record);  // the second
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/MachineFileError.hpp"

namespace halvermonte {

struct SimulatedState;

/// Answers from a machine file. It starts in the first tick; an engine is made and makes its first
/// pass in that state, and nextTick() comes before each later pass. One thread at a time.
class HALVERMONTE_EXPORT SimulatedMachine : public Machine {
 public:
  /// Reads the file at the path, or the text of a file. Both throw MachineFileError, also if a pass
  /// over a tick would end the process; `fileName` is what its message calls the file.
  static std::unique_ptr<SimulatedMachine> fromFile(const std::string& path);
  static std::unique_ptr<SimulatedMachine> fromText(std::string_view json,
                                                    const std::string& fileName);

  ~SimulatedMachine() override;

  std::string name() override;
  SMCService smcService() override;
  uint32_t openSMC() override;
  bool answersWideCalls() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::vector<SensorName> sensorNames() override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override;
  /// After the last tick its state stays, while the clock goes on by one second a tick, and the
  /// waves with it.
  bool nextTick() override;
  std::optional<std::string> localizedHostName() override;
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;
  /// Always unreadable.
  Process process(int32_t identifier) override;
  /// The keys that the controller has in this tick, in order.
  SensorInventory inventory() override;

 private:
  explicit SimulatedMachine(std::unique_ptr<SimulatedState> state);

  std::unique_ptr<SimulatedState> state_;
};

}  // namespace halvermonte
