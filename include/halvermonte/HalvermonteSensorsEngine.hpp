// HalvermonteSensorsEngine: samples the computer's sensors and disk traffic into a host's record.
//
// A host makes one engine and hands it a record on each tick. The engine has no lock and no thread:
// its passes must not overlap. The record's properties may be read from any thread meanwhile. On
// Linux, sensors that take long are read on threads of the library, which handle no signals and for
// which neither a pass nor the end of the program waits.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "halvermonte/Export.h"
#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {

struct EngineState;
class Questions;
class TemperatureWalk;

class HALVERMONTE_EXPORT HalvermonteSensorsEngine {
 public:
  /// Asks for the processor's name, which takes seconds if a system tool is started for it, and the
  /// number of cores, and matches the drives. None of these is asked for again.
  HalvermonteSensorsEngine();
  /// The same, but asks these questions. For faces of the engine in other languages, as their type
  /// is not installed. REQUIRES: the questions outlive the engine.
  explicit HalvermonteSensorsEngine(const Questions& questions);
  /// Releases the engine's objects, but not the drive iterator and the main port, on purpose: hosts
  /// have always known them to outlive an engine.
  ~HalvermonteSensorsEngine();
  HalvermonteSensorsEngine(const HalvermonteSensorsEngine&) = delete;
  HalvermonteSensorsEngine& operator=(const HalvermonteSensorsEngine&) = delete;

  /// One pass: fills the record's sensor and disk properties and returns the same record, which is
  /// kept only for the length of the pass. Raises a RangeException if the HID event system names
  /// more sensors than it gives values. What a setter of the record throws reaches the caller too.
  /// REQUIRES: a record.
  template <class Record>
  std::shared_ptr<Record> getSensorsInfo(std::shared_ptr<Record> record) {
    pass(*record);
    return record;
  }

  /// Returns the processor's name from the hardware report, or "" if it has none. Runs a command.
  static Text askSytemInfoForProcessorName();
  /// Returns the number of physical cores as the kernel counts them, or 1 if it does not say.
  static int32_t physicalCores();
  /// Returns the process's CPU use in percent of one core. 0.0 if ps could not be started or prints
  /// no number, -1.0 if its output cannot be read. Runs a command.
  static float askSystemPS(int32_t processIdentifier);

  /// Names and readings of the HID sensors, aligned by index. If the event system returns no list,
  /// names are absent, and current and voltage readings end the process.
  static Array currentArray();
  static Array voltageArray();
  static Array thermalArray();
  static Array returnCurrentValues();
  static Array returnVoltageValues();
  static Array returnThermalValues();

  /// What the engine carries between passes: for tests and tools of this project, as its type is
  /// not installed.
  const EngineState& state() const& noexcept { return *state_; }
  const EngineState& state() const&& = delete;

 private:
  void pass(SensorsRecord& record);

  const Questions& questions_;
  std::unique_ptr<EngineState> state_;
  std::unique_ptr<TemperatureWalk> temperatureWalk_;
};

}  // namespace halvermonte
