// Passes of one engine over one machine into one record.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "halvermonte/HalvermonteSensorsEngine.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/MachineRecorder.hpp"
#include "halvermonte/StatisticsData.hpp"
#include "monitor/Beat.hpp"
#include "monitor/Options.hpp"
#include "monitor/PassView.hpp"
#include "monitor/PassWatch.hpp"
#include "monitor/ProcessWatch.hpp"
#include "monitor/ReadMarks.hpp"
#include "monitor/Signals.hpp"
#include "monitor/StandardStreams.hpp"

namespace halvermonte {

/// A machine to sample, and what to call it.
struct ChosenMachine {
  std::unique_ptr<Machine> machine;
  std::unique_ptr<MachineRecorder> recorder = nullptr;  ///< null unless it is recorded
  std::string title = "";                               ///< its name, and what it is
  bool isSimulated = false;                             ///< from a machine file
};

/// The time from one pass to the next: the engine has no rates for passes that are less than a
/// second apart.
std::chrono::steady_clock::duration intervalOf(const Options& options);

/// The wait between two passes.
class Pause {
 public:
  /// A run that watches, serves or records can be stopped by a signal, and ends cleanly.
  explicit Pause(const Options& options);

  /// Waits until the pass after the one that counted the drives' bytes at that time is due. Returns
  /// false if a signal asked the program to stop.
  bool wait(Beat::Clock::time_point counted) const;

 private:
  bool waitUntil(Beat::Clock::time_point time) const;

  std::chrono::steady_clock::duration interval_;
  std::optional<Signals> signals_;
};

class Sampling {
 public:
  /// Makes the engine and the record. The machine answers the calling thread as long as this object
  /// lives; objects of one thread end in the reverse order of their making.
  explicit Sampling(ChosenMachine chosen);

  /// Makes the next pass. The machine moves on to its next tick before each pass but the first. The
  /// view stays as it is until the next pass.
  const PassView& pass();
  /// Makes the first pass ahead of time; pass() returns it later. REQUIRES: no pass was made yet.
  const PassView& firstPass();
  /// Whether pass() was called.
  bool hasPassed() const { return hasPassed_; }

  /// Adds the CPU use of a process to the next views. Throws a Failure if there is no such process,
  /// or if the machine cannot read it.
  void watchProcess(int32_t identifier);
  /// Adds what the engine prints to the next views. The messages last until the last pass.
  void collectComplaints(HeldMessages& messages) { messages_ = &messages; }

  Machine& machine() { return machine_; }
  /// Null unless the machine is recorded.
  MachineRecorder* recorder() { return chosen_.recorder.get(); }
  /// The last pass.
  const PassView& view() const { return view_; }
  const HalvermonteSensorsEngine& engine() const { return engine_; }

 private:
  void makePass();
  /// Fills what a host fills, if the machine says anything about itself.
  void storeFacts();
  void addExtras();

  ChosenMachine chosen_;
  Machine& machine_;  ///< the recorder, if there is one
  PassWatch watch_;
  ScopedMachine scope_;
  HalvermonteSensorsEngine engine_;
  const ReadMarks marks_;
  std::shared_ptr<StatisticsData> record_ = std::make_shared<StatisticsData>();
  PassView view_;
  bool hasPassed_ = false;
  bool isAhead_ = false;  ///< the first pass was made, and pass() has not returned it yet
  std::optional<ProcessWatch> process_;
  HeldMessages* messages_ = nullptr;
};

using ShowPass = std::function<void(const PassView&)>;

/// Makes that many passes and shows each, if there is something to show it. Waits before each pass
/// but the sampling's first. Returns the number of passes: fewer if a signal asked to stop.
uint64_t makePasses(Sampling& sampling, const Pause& pause, uint64_t passes, const ShowPass& show);

}  // namespace halvermonte
