// Machine: the computer that the engine reads. Without one, it reads this computer; with a
// SimulatedMachine it reads a machine file; and a host may bring a Machine of its own:
//
//   class Kettle : public Machine {
//    public:
//     double clock() override { return now(); }
//     std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
//       HIDServices services;
//       if (kind == HIDSensorKind::temperature) services.push_back({"gas gauge battery",
//       degrees()}); return std::make_shared<HIDServices>(std::move(services));
//     }
//   };
//
//   Kettle kettle;
//   ScopedMachine scope(kettle);      // on this thread, until the end of the block
//   HalvermonteSensorsEngine engine;  // reads the kettle
//
// The defaults together are an empty computer: no controller, no sensors, no drives, a clock at 0,
// commands that print nothing. A Machine is asked from one thread at a time, unless its own header
// says more. A question must not throw unless its comment allows it. Not on macOS: there, the
// system itself answers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/MachineAnswers.hpp"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

class HALVERMONTE_EXPORT Machine {
 public:
  Machine() = default;
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  virtual ~Machine();

  /// What a person calls it.
  virtual std::string name() { return "Empty machine"; }
  /// Whether it is the computer that the program runs on. Its readings are real only then.
  virtual bool isThisComputer() { return false; }

  virtual SMCService smcService() { return {}; }
  /// Opens a connection to the controller; the code is IOServiceOpen's. What is asked until the
  /// next opening belongs to one pass.
  virtual uint32_t openSMC() { return kCodeSuccess; }
  virtual void closeSMC() {}
  /// Whether calls in the 88-byte layout are answered.
  virtual bool answersWideCalls() { return true; }
  virtual SMCKeyInfo smcKeyInfo(uint32_t /*key*/) { return {.result = kSMCKeyNotFound}; }
  virtual SMCKeyBytes smcKeyBytes(uint32_t /*key*/) { return {.result = kSMCKeyNotFound}; }

  /// The names that the machine adds to the built-in ones, in order. A key that is built in
  /// keeps its own name. Asked once for each engine, when it is made.
  virtual std::vector<SensorName> sensorNames() { return {}; }

  /// The services of a kind in service order; null if the event system returns no list. The list
  /// stays as it is for as long as the caller holds it.
  virtual std::shared_ptr<const HIDServices> hidServices(HIDSensorKind /*kind*/) {
    return std::make_shared<HIDServices>();
  }

  /// How many block-storage drivers match; absent if the matching call fails.
  virtual std::optional<size_t> driveCount() { return 0; }
  /// Called before a walk takes its first driver. May raise a PlatformException.
  virtual void beginDriveWalk() {}
  /// The driver at an index below driveCount(). May raise a PlatformException.
  virtual Drive drive(size_t /*index*/) { return UnreadableDrive{}; }

  /// Seconds since 1970-01-01T00:00:00Z.
  virtual double clock() { return 0; }
  /// Moves a machine that changes in ticks, such as a simulated one, to its next tick. Returns
  /// whether it did; a computer changes by itself and returns false.
  virtual bool nextTick() { return false; }
  /// Absent if the platform reports no name.
  virtual std::optional<std::string> localizedHostName() { return std::nullopt; }
  /// What the command prints under /bin/sh; absent if it could not be started.
  virtual std::optional<std::string> outputOfCommand(const std::string& /*command*/) { return ""; }
  /// A kernel variable; absent if there is none with that name.
  virtual std::optional<int64_t> kernelVariable(const std::string& /*name*/) {
    return std::nullopt;
  }

  /// Every sensor that the machine can list, shown or not. May read them.
  virtual SensorInventory inventory() { return {}; }
  /// How many of the sensors that have keys this user was not allowed to read the last time.
  virtual size_t refusedSensors() { return 0; }
  /// What a person calls the source of a drive's counters; "" if the machine cannot say.
  virtual std::string driveSource(size_t /*index*/) { return ""; }

  /// What the machine says about itself as a host; absent if it says nothing.
  virtual std::optional<HostFacts> hostFacts() { return std::nullopt; }
  /// The process with an identifier above 0.
  virtual Process process(int32_t /*identifier*/) { return NoProcess{}; }

  /// The machine that answers the calling thread: the innermost ScopedMachine's, else the
  /// process's.
  static Machine& current();
  /// Sets the process's machine, which the caller keeps alive; null: this computer again.
  static void setProcessMachine(Machine* machine);
};

/// Makes a machine answer the calling thread until the guard's end. Guards nest.
class HALVERMONTE_EXPORT ScopedMachine {
 public:
  explicit ScopedMachine(Machine& machine);
  ~ScopedMachine();
  ScopedMachine(const ScopedMachine&) = delete;
  ScopedMachine& operator=(const ScopedMachine&) = delete;

 private:
  Machine* former_;
};

/// Forwards every question to another machine, so that a host or a recorder overrides just one.
class HALVERMONTE_EXPORT MachineWrapper : public Machine {
 public:
  /// REQUIRES: the inner machine outlives this one.
  explicit MachineWrapper(Machine& inner) : inner_(inner) {}
  ~MachineWrapper() override;

  std::string name() override { return inner_.name(); }
  bool isThisComputer() override { return inner_.isThisComputer(); }
  SMCService smcService() override { return inner_.smcService(); }
  uint32_t openSMC() override { return inner_.openSMC(); }
  void closeSMC() override { inner_.closeSMC(); }
  bool answersWideCalls() override { return inner_.answersWideCalls(); }
  SMCKeyInfo smcKeyInfo(uint32_t key) override { return inner_.smcKeyInfo(key); }
  SMCKeyBytes smcKeyBytes(uint32_t key) override { return inner_.smcKeyBytes(key); }
  std::vector<SensorName> sensorNames() override { return inner_.sensorNames(); }
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind kind) override {
    return inner_.hidServices(kind);
  }
  std::optional<size_t> driveCount() override { return inner_.driveCount(); }
  void beginDriveWalk() override { inner_.beginDriveWalk(); }
  Drive drive(size_t index) override { return inner_.drive(index); }
  double clock() override { return inner_.clock(); }
  bool nextTick() override { return inner_.nextTick(); }
  std::optional<std::string> localizedHostName() override { return inner_.localizedHostName(); }
  std::optional<std::string> outputOfCommand(const std::string& command) override {
    return inner_.outputOfCommand(command);
  }
  std::optional<int64_t> kernelVariable(const std::string& name) override {
    return inner_.kernelVariable(name);
  }
  std::optional<HostFacts> hostFacts() override { return inner_.hostFacts(); }
  Process process(int32_t identifier) override { return inner_.process(identifier); }
  SensorInventory inventory() override { return inner_.inventory(); }
  size_t refusedSensors() override { return inner_.refusedSensors(); }
  std::string driveSource(size_t index) override { return inner_.driveSource(index); }

 protected:
  Machine& inner_;
};

}  // namespace halvermonte
