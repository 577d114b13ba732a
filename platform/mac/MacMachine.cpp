#include "platform/mac/MacMachine.hpp"

#include "halvermonte/FourCharacterCode.hpp"
#include "halvermonte/Values.hpp"
#include "platform/Foundation.hpp"
#include "platform/HardwareReportCommand.hpp"
#include "platform/mac/HIDSensors.hpp"
#include "platform/mac/HardwareReport.hpp"
#include "platform/mac/KernelVariables.hpp"

namespace halvermonte {

MacMachine::MacMachine() = default;
MacMachine::~MacMachine() = default;

std::string MacMachine::name() { return macos::textVariable("hw.model").value_or("Mac"); }

SMCService MacMachine::smcService() { return macos::Controller::service(); }

uint32_t MacMachine::openSMC() {
  const std::lock_guard lock(mutex_);
  return controller_.open();
}

void MacMachine::closeSMC() {
  const std::lock_guard lock(mutex_);
  controller_.close();
}

bool MacMachine::answersWideCalls() {
  const std::lock_guard lock(mutex_);
  return controller_.answersWideCalls();
}

SMCKeyInfo MacMachine::smcKeyInfo(uint32_t key) {
  const std::lock_guard lock(mutex_);
  return controller_.info(key);
}

SMCKeyBytes MacMachine::smcKeyBytes(uint32_t key) {
  const std::lock_guard lock(mutex_);
  return controller_.bytes(key);
}

SensorInventory MacMachine::inventory() {
  const std::lock_guard lock(mutex_);
  SensorInventory inventory;
  for (const uint32_t key : controller_.keys()) {
    SensorListing listing;
    listing.key = charactersOf(key);
    inventory.push_back(listing);
  }
  return inventory;
}

std::shared_ptr<const HIDServices> MacMachine::hidServices(HIDSensorKind kind) {
  return macos::readServices(kind);
}

std::optional<size_t> MacMachine::driveCount() {
  const std::lock_guard lock(mutex_);
  return drives_.count();
}

void MacMachine::beginDriveWalk() {
  const std::lock_guard lock(mutex_);
  drives_.beginWalk();
}

Drive MacMachine::drive(size_t index) {
  const std::lock_guard lock(mutex_);
  return drives_.read(index);
}

double MacMachine::clock() { return foundation::currentDate().secondsSince1970(); }

std::optional<std::string> MacMachine::localizedHostName() {
  const Text name = foundation::localizedHostName();
  return name ? std::optional(name.str()) : std::nullopt;
}

std::optional<std::string> MacMachine::outputOfCommand(const std::string& command) {
  std::optional<std::string> output = foundation::outputOfCommand(command);
  if (output && command == kHardwareReportCommand) output = macos::withoutIdentifiers(*output);
  return output;
}

std::optional<int64_t> MacMachine::kernelVariable(const std::string& name) {
  return macos::integerVariable(name);
}

}  // namespace halvermonte
