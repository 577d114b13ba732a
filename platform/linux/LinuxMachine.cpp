#include "platform/linux/LinuxMachine.hpp"

#include <cstdint>
#include <ctime>
#include <utility>

#include "halvermonte/MachineAnswers.hpp"
#include "platform/HardwareReportCommand.hpp"
#include "platform/linux/BlockDrives.hpp"
#include "platform/linux/Commands.hpp"
#include "platform/linux/HardwareReport.hpp"
#include "platform/linux/HostFacts.hpp"
#include "platform/linux/HostName.hpp"
#include "platform/linux/Processes.hpp"
#include "platform/linux/ProcessorCores.hpp"
#include "platform/linux/ProcessorName.hpp"
#include "platform/linux/hwmon/HwmonController.hpp"

namespace halvermonte {

LinuxMachine::LinuxMachine(ComputerFolders roots, const ComputerOptions& options,
                           linuxos::SystemCalls& calls)
    : roots_(std::move(roots)),
      calls_(calls),
      commands_(std::make_unique<linuxos::Commands>()),
      controller_(std::make_unique<linuxos::HwmonController>(
          calls_, linuxos::HwmonOptions{.sys = roots_.sys,
                                        .proc = roots_.proc,
                                        .driveTemperatures = options.driveTemperatures,
                                        .managementLibrary = managementLibrary(options)})),
      drives_(std::make_unique<linuxos::BlockDrives>(calls_, roots_.sys, roots_.proc)),
      facts_(std::make_unique<linuxos::HostFactsReader>(calls_, roots_.sys, roots_.proc)) {}

LinuxMachine::~LinuxMachine() = default;

std::string LinuxMachine::name() {
  if (!isThisComputer()) {
    return "tree at " + (roots_.sys != ComputerFolders().sys ? roots_.sys : roots_.proc);
  }
  const std::string model = linuxos::modelName(calls_, roots_.sys);
  return model.empty() ? "Linux computer" : model;
}

bool LinuxMachine::isThisComputer() {
  const ComputerFolders here;
  return roots_.sys == here.sys && roots_.proc == here.proc && roots_.etc == here.etc;
}

std::string LinuxMachine::managementLibrary(const ComputerOptions& options) {
  const bool isDefault = options.managementLibrary == ComputerOptions().managementLibrary;
  return isThisComputer() || !isDefault ? options.managementLibrary : "";
}

SMCService LinuxMachine::smcService() { return {.present = true}; }

uint32_t LinuxMachine::openSMC() {
  const std::lock_guard lock(mutex_);
  controller_->open();
  return kCodeSuccess;
}

SMCKeyInfo LinuxMachine::smcKeyInfo(uint32_t key) {
  const std::lock_guard lock(mutex_);
  return controller_->info(key);
}

SMCKeyBytes LinuxMachine::smcKeyBytes(uint32_t key) {
  const std::lock_guard lock(mutex_);
  return controller_->bytes(key);
}

std::vector<SensorName> LinuxMachine::sensorNames() {
  const std::lock_guard lock(mutex_);
  return controller_->names();
}

SensorInventory LinuxMachine::inventory() {
  const std::lock_guard lock(mutex_);
  return controller_->inventory();
}

size_t LinuxMachine::refusedSensors() {
  const std::lock_guard lock(mutex_);
  return controller_->refusedSensors();
}

std::optional<size_t> LinuxMachine::driveCount() {
  const std::lock_guard lock(mutex_);
  return drives_->count();
}

void LinuxMachine::beginDriveWalk() {
  const std::lock_guard lock(mutex_);
  drives_->beginWalk();
}

Drive LinuxMachine::drive(size_t index) {
  const std::lock_guard lock(mutex_);
  return drives_->read(index);
}

std::string LinuxMachine::driveSource(size_t index) {
  const std::lock_guard lock(mutex_);
  return drives_->sourceOf(index);
}

double LinuxMachine::clock() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::optional<std::string> LinuxMachine::localizedHostName() {
  // This computer's own /etc says nothing about a tree.
  const bool knowsOwner = isThisComputer() || roots_.etc != ComputerFolders().etc;
  std::optional<std::string> name;
  if (knowsOwner) name = linuxos::prettyHostName(calls_, roots_.etc);
  return name ? name : linuxos::kernelHostName(calls_, roots_.proc);
}

std::optional<std::string> LinuxMachine::outputOfCommand(const std::string& command) {
  if (command != kHardwareReportCommand) return commands_->outputOf(command);
  return linuxos::hardwareReport(linuxos::processorName(calls_, roots_.sys, roots_.proc));
}

std::optional<int64_t> LinuxMachine::kernelVariable(const std::string& name) {
  if (name != "hw.physicalcpu") return std::nullopt;
  return linuxos::physicalCores(calls_, roots_.sys, roots_.proc);
}

std::optional<HostFacts> LinuxMachine::hostFacts() {
  const std::lock_guard lock(mutex_);
  return facts_->read();
}

Process LinuxMachine::process(int32_t identifier) {
  return linuxos::readProcess(calls_, roots_.proc, identifier);
}

}  // namespace halvermonte
