// The signals that end or disturb a run, and the wait between two passes.
#pragma once

#include <chrono>
#include <csignal>
#include <cstdint>

namespace halvermonte {

/// Why a wait ended.
enum class Wake : uint8_t { timeUp, stop, suspend, resized, input, news };

/// How long to wait at once if that much time is left. The kernel may end a wait late by a
/// thousandth of its length, so all but the last milliseconds are waited for in parts that end
/// early.
std::chrono::nanoseconds partOfWait(std::chrono::nanoseconds left);

/// Turns Ctrl-C, SIGTERM, SIGHUP and SIGQUIT into a clean stop. A second one ends a process that
/// hangs. One object at a time.
class Signals {
 public:
  /// With a screen, Ctrl-Z and a new size of the window end a wait, too.
  enum class Watch : uint8_t { stops, stopsAndScreen };

  explicit Signals(Watch watch);
  ~Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  /// Waits until the point in time, unless something happens first. `keyboard` and `news` are
  /// descriptors to watch for input, or -1.
  Wake waitUntil(std::chrono::steady_clock::time_point time, int keyboard = -1,
                 int news = -1) const;

  /// Sets a function to call when a second stop, SIGABRT or a crash is about to end the process;
  /// null: none. It runs in a signal handler.
  static void setLastAct(void (*act)());

  /// As long as it lives, the calling thread gets none of the signals, and a thread that it starts
  /// never gets one.
  class Blocked;
};

class Signals::Blocked {
 public:
  Blocked();
  ~Blocked();
  Blocked(const Blocked&) = delete;
  Blocked& operator=(const Blocked&) = delete;

  const sigset_t& former() const { return former_; }

 private:
  sigset_t former_;
};

}  // namespace halvermonte
