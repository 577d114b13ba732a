// The machine that is a Mac, asked through the system's own IOKit, CoreFoundation and Foundation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "platform/mac/BlockDrives.hpp"
#include "platform/mac/Controller.hpp"

namespace halvermonte {

/// Answers from the Mac that the program runs on. It only reads. Any thread may ask, while others
/// do.
class MacMachine : public Machine {
 public:
  MacMachine();
  ~MacMachine() override;

  /// The model's identifier, such as "Mac15,9".
  std::string name() override;
  bool isThisComputer() override { return true; }

  SMCService smcService() override;
  uint32_t openSMC() override;
  void closeSMC() override;
  bool answersWideCalls() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  /// The keys that the controller lists, in its order.
  SensorInventory inventory() override;

  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;

  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;

  double clock() override;
  std::optional<std::string> localizedHostName() override;
  /// Runs the command in /bin/sh. The hardware report comes without serial numbers and the like.
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;

 private:
  std::mutex mutex_;  ///< guards what follows
  macos::Controller controller_;
  macos::BlockDrives drives_;
};

}  // namespace halvermonte
