// The machine that is a Linux computer, asked through the kernel's own files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/ThisComputer.hpp"
#include "platform/SensorNames.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte {

namespace linuxos {
class BlockDrives;
class Commands;
class HostFactsReader;
class HwmonController;
}  // namespace linuxos

/// Answers from this computer, or from a tree. Reads only: nothing is written, no device is opened
/// except by NVIDIA's library, and nothing that sleeps is woken. What cannot be read is absent, and
/// no question fails because of it.
///
/// Any thread may ask, while others do. The machine starts threads of its own only to read sensors:
/// one for a moment when there are new ones, and one for each slow sensor. They get no signals, and
/// the destructor does not wait for them. A thread whose read never returns stays until the process
/// ends, together with the sensor's open file.
///
/// REQUIRES: the calls outlive the machine and its threads.
class LinuxMachine : public Machine {
 public:
  explicit LinuxMachine(ComputerFolders roots = {}, const ComputerOptions& options = {},
                        linuxos::SystemCalls& calls = linuxos::SystemCalls::real());
  ~LinuxMachine() override;

  /// The model by its maker's name, never the host's name; a tree is named by its path.
  std::string name() override;
  /// True only for the default roots.
  bool isThisComputer() override;

  /// Always present: a computer without sensors has a controller without keys.
  SMCService smcService() override;
  /// Notices chips that came or went, and waits at most 0.3 seconds for the first readings of new
  /// sensors.
  uint32_t openSMC() override;
  SMCKeyInfo smcKeyInfo(uint32_t key) override;
  SMCKeyBytes smcKeyBytes(uint32_t key) override;
  /// Of all temperatures that the engine's catalogue lacks.
  std::vector<SensorName> sensorNames() override;
  /// Every sensor that the kernel offers, shown or not. Reads them, and waits at most 0.3 seconds
  /// for those that were never read.
  SensorInventory inventory() override;
  size_t refusedSensors() override;

  std::optional<size_t> driveCount() override;
  void beginDriveWalk() override;
  Drive drive(size_t index) override;
  /// Such as "pci0000:00/ata1/block/sda/stat".
  std::string driveSource(size_t index) override;

  double clock() override;
  /// The name that the owner gave, else the kernel's; absent in a tree that holds neither.
  std::optional<std::string> localizedHostName() override;
  /// Runs the command in /bin/sh, and waits until its output is closed. The command that asks a Mac
  /// for its hardware report is answered from this computer instead.
  std::optional<std::string> outputOfCommand(const std::string& command) override;
  /// "hw.physicalcpu": cores, however many threads each runs.
  std::optional<int64_t> kernelVariable(const std::string& name) override;
  /// Always present.
  std::optional<HostFacts> hostFacts() override;
  /// Starts no process to find out.
  Process process(int32_t identifier) override;

 private:
  std::string managementLibrary(const ComputerOptions& options);

  const ComputerFolders roots_;
  linuxos::SystemCalls& calls_;
  std::unique_ptr<linuxos::Commands> commands_;
  std::mutex mutex_;  ///< guards what follows
  std::unique_ptr<linuxos::HwmonController> controller_;
  std::unique_ptr<linuxos::BlockDrives> drives_;
  std::unique_ptr<linuxos::HostFactsReader> facts_;
};

}  // namespace halvermonte
