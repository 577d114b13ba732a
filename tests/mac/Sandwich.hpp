// A Mac whose IOKit, CoreFoundation and Foundation are the portable platform's, over a machine of
// the test's: an engine over it asks the portable platform, which asks the Mac's machine, which
// asks the portable platform again, which asks the test's machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "halvermonte/Machine.hpp"
#include "platform/mac/MacMachine.hpp"
#include "tests/support/PlatformCalls.hpp"

namespace halvermonte::test {

class Sandwich : public Machine {
 public:
  /// REQUIRES: the machine below outlives this one.
  explicit Sandwich(Machine& below) : below_(below) {}
  ~Sandwich() override;

  /// The machine below has the name, and the ticks.
  std::string name() override { return below_.name(); }
  bool nextTick() override { return below_.nextTick(); }

  SMCService smcService() override;
  uint32_t openSMC() override;
  void closeSMC() override;
  bool answersWideCalls() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override;
  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  double clock() override;
  std::optional<std::string> localizedHostName() override;
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  std::optional<int64_t> kernelVariable(const std::string& name) override;
  SensorInventory inventory() override;

 private:
  /// Asks the Mac, which the machine below answers meanwhile.
  template <class Ask>
  auto ask(const Ask& question) {
    const ScopedMachine scope(below_);
    return question(*mac_);
  }

  Machine& below_;
  std::unique_ptr<MacMachine> mac_ = std::make_unique<MacMachine>();
};

/// A machine whose controller has a key that counts the keys, and which lists them, as that of a
/// Mac has.
class CountedKeys : public MachineWrapper {
 public:
  using MachineWrapper::MachineWrapper;

  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  SensorInventory inventory() override;

 private:
  ListedKeys listed_;
};

}  // namespace halvermonte::test
