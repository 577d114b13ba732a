// The computer that a machine file describes. docs/machine-files.md is the format.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/SensorNames.hpp"
#include "platform/portable/Inventory.hpp"
#include "platform/portable/Machine.hpp"
#include "platform/portable/Process.hpp"
#include "platform/simulated/HIDKindNames.hpp"
#include "platform/simulated/MachineFile.hpp"
#include "platform/simulated/SMCAnswer.hpp"

namespace halvermonte {

/// Answers from a machine file. It starts in the first tick; an engine is made and makes its first
/// pass in that state, and nextTick() comes before each later pass. One thread at a time.
class SimulatedMachine : public Machine {
 public:
  /// Both throw MachineFileError; `fileName` is what its message calls the file.
  static std::unique_ptr<SimulatedMachine> fromFile(const std::string& path);
  static std::unique_ptr<SimulatedMachine> fromText(std::string_view json,
                                                    const std::string& fileName);

  explicit SimulatedMachine(MachineFile file);

  std::string name() override { return file_.name; }
  SMCService smcService() override;
  uint32_t openSMC() override;
  bool answersWideCalls() override { return smc_.answersWideCalls; }
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::vector<SensorName> sensorNames() override { return file_.sensorNames; }
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override { return driveCount_; }
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override { return clock_; }
  /// After the last tick its state stays, while the clock goes on by one second a tick, and the
  /// waves with it.
  bool nextTick() override;
  std::optional<std::string> localizedHostName() override { return file_.hostName; }
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;
  Process process(int32_t /*identifier*/) override {
    return UnreadableProcess{"a simulated machine has no processes"};
  }
  /// The keys that the controller has in this tick, in order.
  SensorInventory inventory() override;

 private:
  /// The controller in the state that the ticks so far have led to.
  struct Controller {
    std::optional<ControllerState> saidState;
    bool keysGiven = false;
    uint32_t code = kCodeError;
    uint32_t absentCode = kCodeSuccess;
    bool answersWideCalls = true;
    std::unordered_map<uint32_t, const SMCAnswer*> keys;

    ControllerState state() const;
    void apply(const SMCChange& change);
  };

  void apply(const MachineTick& tick);

  const MachineFile file_;
  size_t tick_ = 0;
  double clock_ = 0;
  Controller smc_;
  // What stands in the file, of the ticks so far.
  std::array<const HIDServiceList*, kHIDSensorKinds> hid_;
  const DriveList* drives_;
  std::optional<size_t> driveCount_;  ///< the first tick's: drivers are matched once
  const std::string* drivesRaise_ = nullptr;
  /// The lists at the clock's time, made when first asked for.
  std::array<std::shared_ptr<const HIDServices>, kHIDSensorKinds> hidServices_;
};

}  // namespace halvermonte
