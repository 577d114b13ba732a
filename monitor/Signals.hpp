// The signals that end or disturb a run, and the wait between two passes.
#pragma once

#include <chrono>
#include <cstdint>

namespace halvermonte {

/// Why a wait ended.
enum class Wake : uint8_t { timeUp, stop, suspend, resized, input };

/// Turns Ctrl-C, SIGTERM, SIGHUP and SIGQUIT into a clean stop. A second one ends a process that
/// hangs. One object at a time.
class Signals {
 public:
  /// What to watch: with a screen, also Ctrl-Z and changes of the window.
  enum class Watch : uint8_t { stops, stopsAndScreen };

  explicit Signals(Watch watch);
  ~Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  /// Waits until the point in time, or until something happens first. A keyboard with input to read
  /// is Wake::input; -1: no keyboard.
  Wake waitUntil(std::chrono::steady_clock::time_point time, int keyboard = -1) const;

  /// Sets what is called when the process is about to die of a second stop or of SIGABRT; null:
  /// nothing. It runs in a signal handler.
  static void setLastAct(void (*act)());
};

}  // namespace halvermonte
