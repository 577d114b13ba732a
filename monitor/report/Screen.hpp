// The terminal's other screen, which is redrawn in place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "monitor/StandardStreams.hpp"

namespace halvermonte {

struct WindowSize {
  size_t columns = 80, rows = 24;
};

/// Takes the other screen, without cursor and echo, and gives it back at the object's end or when
/// the process aborts. One object at a time.
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

  /// The descriptor to read keys from; -1 if there is no keyboard.
  int keyboard() const;
  /// Reads a key and returns it; 0 if there is none, and then no keyboard either.
  char readKey();

 private:
  void enter();
  void leave() noexcept;

  const Output& output_;
};

}  // namespace halvermonte
