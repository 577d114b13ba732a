// The list of the live view: its rows in columns, and the keys that move through them.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "monitor/PassView.hpp"
#include "monitor/live/Grid.hpp"
#include "monitor/live/History.hpp"
#include "monitor/live/Pen.hpp"
#include "monitor/live/RowDrawing.hpp"
#include "monitor/live/Rows.hpp"
#include "monitor/live/Snapshot.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {

class List {
 public:
  /// Makes the rows of a snapshot, as many as fit into a window of that size if they may fold.
  /// REQUIRES: the snapshot lives until the next call.
  void make(const Snapshot& snapshot, const ViewState& state, WindowSize size);

  /// Null if no row is selected, or the selected one is hidden.
  const Row* selected(const ViewState& state) const;

  /// Draws the hottest sensor in the row `top`, and the list below it and above `bottom`. Keeps the
  /// scroll position within the list.
  void draw(Grid& grid, size_t top, size_t bottom, const PassView& view, const History& history,
            const Pen& pen, ViewState& state);

  /// Applies a key that moves, folds or unfolds.
  void press(const KeyPress& press, ViewState& state);

 private:
  /// The rows of a column of the window: the first, and the one behind the last.
  struct Part {
    size_t begin = 0, end = 0;
  };

  static void drawHottest(Grid& grid, const RowDrawing& drawing, const PassView& view,
                          const Pen& pen, const Place& place);
  void arrange(size_t height, ViewState& state);
  bool fitsSideBySide(size_t height) const;
  void arrangeSideBySide(size_t height);
  void arrangeInSequence(size_t height, ViewState& state);
  size_t endOfPart(size_t begin, size_t columns, size_t height) const;

  std::optional<size_t> selectedRow(const ViewState& state) const;
  void select(size_t row, ViewState& state);
  void step(bool forward, size_t rows, ViewState& state);
  void fold(bool isFolded, ViewState& state);

  std::vector<Row> rows_;
  size_t side_ = 0;     ///< the first row of the fans and disks
  size_t columns_ = 1;  ///< how many the window has room for
  bool hasSide_ = false;
  std::vector<Part> parts_;
  size_t visible_ = 1;  ///< how many rows the window shows
  bool followsSelection_ = false;
};

}  // namespace halvermonte
