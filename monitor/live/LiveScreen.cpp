#include "monitor/live/LiveScreen.hpp"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"
#include "monitor/live/Panes.hpp"
#include "monitor/live/Rows.hpp"

namespace halvermonte {
namespace {

void drawWaiting(Grid& grid) {
  grid.put(0, 0, "halvermonte-monitor", Look::strong);
  grid.put(2, 0, "waiting for the first pass");
}

void drawLines(Grid& grid, const std::vector<std::string>& lines, size_t top, size_t bottom,
               const Pen& pen) {
  for (size_t i = 0; i < lines.size() && top + i < bottom; ++i) {
    grid.put(top + i, 1, pen.shown(lines[i]));
  }
}

/// The texts as lines of that width, which end between words if they can.
std::vector<std::string> wrapped(const std::vector<std::string>& texts, size_t width) {
  std::vector<std::string> lines;
  for (const std::string& text : texts) {
    lines.emplace_back();
    std::istringstream words(text);
    for (std::string word; words >> word;) {
      const bool fits = cells(lines.back()) + 1 + cells(word) <= width;
      if (!lines.back().empty() && !fits) lines.emplace_back();
      if (!lines.back().empty()) lines.back() += ' ';
      lines.back() += word;
    }
  }
  return lines;
}

/// A line across the screen that names what stands below it.
void drawSeparator(Grid& grid, size_t row, const std::string& name, const Pen& pen) {
  const size_t width = grid.size().columns;
  for (size_t column = 0; column < width; ++column) {
    grid.put(row, column, pen.glyphs().separator, Look::faint);
  }
  grid.put(row, 1, " " + pen.shown(name) + " ", Look::strong);
}

}  // namespace

LiveScreen::LiveScreen(bool unicode, bool fahrenheit, History::Duration interval)
    : pen_{.unicode = unicode, .fahrenheit = fahrenheit}, history_(interval) {
  state_.fahrenheit = fahrenheit;
}

void LiveScreen::show(std::shared_ptr<const Snapshot> snapshot) {
  const PassView& view = snapshot->view;
  history_.add(view);
  if (view.exception) {
    message_ = "this pass ended early: " + *view.exception;
  } else if (!view.complaints.empty()) {
    message_ = view.complaints.back();
  } else if (!snapshot_) {
    message_ = snapshot->hint;
  }
  list_ = List();  // its rows point into the former snapshot
  snapshot_ = std::move(snapshot);
}

void LiveScreen::press(const KeyPress& press) {
  if (!apply(press, state_)) list_.press(press, state_);
}

Grid LiveScreen::draw(WindowSize size, std::chrono::steady_clock::time_point now) {
  Grid grid(size);
  pen_.fahrenheit = state_.fahrenheit;
  if (!snapshot_) {
    drawWaiting(grid);
    return grid;
  }
  const size_t top = drawHeader(grid, pen_, snapshot_->view, state_.isPaused, now);
  const size_t bottom = size.rows - 1;
  if (state_.showsHelp) {
    drawLines(grid, helpLines(pen_), top, bottom, pen_);
  } else {
    drawList(grid, top, bottom);
  }
  drawFooter(grid, pen_, state_, message_);
  return grid;
}

void LiveScreen::drawList(Grid& grid, size_t top, size_t bottom) {
  const size_t height = bottom - std::min(bottom, top + 1);
  list_.make(*snapshot_, state_, {grid.size().columns, height});
  size_t listBottom = bottom;
  if (const Row* const row = list_.selected(state_); row != nullptr && height > 1) {
    const std::vector<std::string> lines =
        wrapped(detailLines(*row, pen_, snapshot_->view, history_, *snapshot_->origins),
                grid.size().columns - std::min<size_t>(grid.size().columns, 1));
    listBottom -= std::min(lines.size(), height - 1);
    drawSeparator(grid, listBottom, lines.front(), pen_);
    drawLines(grid, {lines.begin() + 1, lines.end()}, listBottom + 1, bottom, pen_);
  }
  list_.draw(grid, top, listBottom, snapshot_->view, history_, pen_, state_);
}

}  // namespace halvermonte
