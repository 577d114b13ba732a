// The terminal, by ncurses: shows a grid of cells and reads keys.
#pragma once

#include <cstddef>
#include <cstdio>
#include <vector>

#include "monitor/StandardStreams.hpp"
#include "monitor/live/Grid.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {

/// Takes the terminal, and gives it back as it was at the object's end or when the process aborts.
/// One object at a time.
class Terminal {
 public:
  /// Throws a Failure if the terminal cannot show a screen. REQUIRES: the output is a terminal, and
  /// outlives the object.
  Terminal(const Output& output, bool usesColour);
  ~Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// The size of the window at this moment, at least one cell.
  WindowSize size();
  void draw(const Grid& grid);
  /// Gives the terminal back ahead of the object's end.
  void giveBack();
  /// Gives the terminal back and stops the process, as Ctrl-Z does, until it is continued.
  void suspend();

  /// The descriptor to wait for keys; -1 if there is no keyboard.
  int keyboard() const { return keyboard_; }
  /// The keys that were pressed since the last call.
  std::vector<KeyPress> readKeys();

 private:
  void preparePairs();

  int descriptor_;
  std::FILE* stream_ = nullptr;
  int keyboard_ = -1;
};

}  // namespace halvermonte
