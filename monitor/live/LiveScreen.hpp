// The live view as cells: what it shows of the passes so far, and what keys change.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

#include "monitor/live/Grid.hpp"
#include "monitor/live/History.hpp"
#include "monitor/live/List.hpp"
#include "monitor/live/Pen.hpp"
#include "monitor/live/Snapshot.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {

class LiveScreen {
 public:
  LiveScreen(bool unicode, bool fahrenheit, History::Duration interval);

  void show(std::shared_ptr<const Snapshot> snapshot);
  void press(const KeyPress& press);
  /// The screen at that time. Before the first pass it says that it waits for it.
  Grid draw(WindowSize size, std::chrono::steady_clock::time_point now);

  bool isPaused() const { return state_.isPaused; }
  bool wantsToEnd() const { return state_.wantsToEnd; }

 private:
  /// Draws the rows, and what there is to say about the selected one below them.
  void drawList(Grid& grid, size_t top, size_t bottom);

  Pen pen_;
  ViewState state_;
  History history_;
  std::shared_ptr<const Snapshot> snapshot_;
  std::string message_;
  List list_;
};

}  // namespace halvermonte
