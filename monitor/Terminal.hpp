// The watched report: a screen that is redrawn in place, and the signals that end or disturb it.
#pragma once

#include <sys/types.h>
#include <termios.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <string>
#include <vector>

#include "monitor/StandardStreams.hpp"

namespace halvermonte {

struct WindowSize {
  size_t columns = 80, rows = 24;
};

/// The terminal's other screen, without cursor and echo, from the beginning of this object to its
/// end, also where the process is aborted meanwhile. One object at a time.
class Screen {
 public:
  /// REQUIRES: the output is a terminal that understands cursor addressing, and outlives the
  /// screen.
  explicit Screen(const Output& output);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  WindowSize size() const;
  /// Shows the lines, as many as the window has rows; each fits its width.
  void draw(const std::vector<std::string>& lines) const;
  /// Gives the terminal back and stops the process, as Ctrl-Z does, until it is continued.
  void suspend();

 private:
  void enter();
  void leave() noexcept;

  const Output& output_;
};

enum class Wake { timeUp, stop, suspend, resized };

/// Turns Ctrl-C, SIGTERM and SIGHUP into a clean stop. With a screen the keys and the window's
/// changes are watched as well. The second Ctrl-C ends a process that hangs.
class Signals {
 public:
  explicit Signals(bool hasScreen);
  ~Signals();
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;

  /// Waits until the point in time, or until something happens first.
  Wake waitUntil(std::chrono::steady_clock::time_point time) const;

 private:
  bool hasScreen_;
};

}  // namespace halvermonte
