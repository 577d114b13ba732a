#include "monitor/live/List.hpp"

#include <algorithm>

#include "monitor/PassView.hpp"
#include "monitor/live/RowDrawing.hpp"

namespace halvermonte {
namespace {

constexpr size_t kColumnCells = 56, kGap = 3;
constexpr size_t kLeastNameCells = 14;
constexpr size_t kWheelRows = 3;

size_t quotientRoundedUp(size_t count, size_t divisor) { return (count + divisor - 1) / divisor; }

/// The rows of fans and disks in a column of their own.
size_t sideRows(const PassView& view) {
  const size_t fans = view.fans.empty() ? 0 : 1 + view.fans.size();
  return fans + 1 + 2 * (1 + kTallChart);
}

size_t difference(size_t a, size_t b) { return a > b ? a - b : b - a; }

}  // namespace

void List::make(const Snapshot& snapshot, const ViewState& state, WindowSize size) {
  columns_ = std::max<size_t>(1, (size.columns + kGap) / (kColumnCells + kGap));
  hasSide_ = columns_ > 1 && sideRows(snapshot.view) <= size.rows;
  const size_t rows = (hasSide_ ? columns_ - 1 : columns_) * size.rows;
  rows_ = makeRows(snapshot.view, *snapshot.origins, state, {.rows = rows, .hasColumns = hasSide_});
  const auto side =
      std::ranges::find_if(rows_, [](const Row& row) { return row.section >= Section::fans; });
  side_ = static_cast<size_t>(side - rows_.begin());
}

const Row* List::selected(const ViewState& state) const {
  const std::optional<size_t> row = selectedRow(state);
  return row ? &rows_[*row] : nullptr;
}

void List::draw(Grid& grid, size_t top, size_t bottom, const PassView& view, const History& history,
                const Pen& pen, ViewState& state) {
  arrange(bottom - std::min(bottom, top + 1), state);
  size_t nameCells = 0;
  for (const Row& row : rows_) nameCells = std::max(nameCells, nameCellsOf(row, pen));
  const size_t gaps = kGap * (parts_.size() - 1);
  const size_t width = (grid.size().columns - gaps) / parts_.size();
  const size_t most = std::max<size_t>(width * 9 / 20, kLeastNameCells);
  const RowDrawing drawing(grid, pen, view, history, std::min(nameCells, most));
  drawHottest(grid, drawing, view, pen, {top, 0, width});
  const std::optional<size_t> selection = selectedRow(state);
  for (size_t part = 0; part < parts_.size(); ++part) {
    const auto [begin, end] = parts_[part];
    for (size_t row = begin; row < end; ++row) {
      drawing.draw(rows_[row], {top + 1 + row - begin, part * (width + kGap), width},
                   row == selection);
    }
  }
}

void List::drawHottest(Grid& grid, const RowDrawing& drawing, const PassView& view, const Pen& pen,
                       const Place& place) {
  const auto hottest = std::ranges::max_element(view.temperatures, {}, &SensorView::number);
  if (hottest == view.temperatures.end()) {
    grid.put(place.row, place.column + 1, "no temperatures to read here");
  } else {
    drawing.drawTemperature(*hottest, "Hottest: " + pen.shown(hottest->name), place);
  }
}

void List::arrange(size_t height, ViewState& state) {
  parts_.clear();
  if (height == 0 || rows_.empty()) {
    parts_.push_back({});
  } else if (fitsSideBySide(height)) {
    state.scroll = 0;
    arrangeSideBySide(height);
  } else {
    arrangeInSequence(height, state);
  }
  followsSelection_ = false;
}

bool List::fitsSideBySide(size_t height) const {
  return hasSide_ && side_ > 0 && side_ < rows_.size() && rows_.size() - side_ <= height &&
         side_ <= (columns_ - 1) * height;
}

/// Temperatures in as few columns as they need, ending between sections if possible, and the rest
/// in a column of its own.
void List::arrangeSideBySide(size_t height) {
  for (size_t begin = 0, left = quotientRoundedUp(side_, height); left > 0; --left) {
    const size_t end = left == 1 ? side_ : endOfPart(begin, left, height);
    parts_.push_back({begin, end});
    begin = end;
  }
  parts_.push_back({side_, rows_.size()});
  visible_ = rows_.size();
}

void List::arrangeInSequence(size_t height, ViewState& state) {
  const size_t columns = std::min(columns_, quotientRoundedUp(rows_.size(), height));
  visible_ = columns * height;
  const size_t most = rows_.size() - std::min(rows_.size(), visible_);
  if (const auto row = selectedRow(state); row && followsSelection_) {
    if (*row < state.scroll) state.scroll = *row;
    if (*row >= state.scroll + visible_) state.scroll = *row + 1 - visible_;
  }
  state.scroll = std::min(state.scroll, most);
  for (size_t column = 0; column < columns; ++column) {
    const size_t begin = std::min(rows_.size(), state.scroll + column * height);
    parts_.push_back({begin, std::min(rows_.size(), begin + height)});
  }
}

/// The end of a part if that many columns are left: the section's that is nearest to an even share,
/// unless the rest would not fit then.
size_t List::endOfPart(size_t begin, size_t columns, size_t height) const {
  const size_t even = begin + quotientRoundedUp(side_ - begin, columns);
  size_t best = begin + height;
  bool isSection = false;
  for (size_t row = begin + 1; row <= begin + height && row < side_; ++row) {
    if (rows_[row].kind != Row::Kind::heading) continue;
    if (side_ - row > (columns - 1) * height) continue;
    if (isSection && difference(row, even) >= difference(best, even)) continue;
    best = row;
    isSection = true;
  }
  return best;
}

std::optional<size_t> List::selectedRow(const ViewState& state) const {
  if (!state.selected) return std::nullopt;
  for (size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row].isSelectable() && rows_[row].id() == *state.selected) return row;
  }
  return std::nullopt;
}

void List::select(size_t row, ViewState& state) {
  state.selected = rows_[row].id();
  followsSelection_ = true;
}

void List::press(const KeyPress& press, ViewState& state) {
  switch (press.key) {
    case Key::up:
    case Key::down:
      return step(press.key == Key::down, 1, state);
    case Key::pageUp:
    case Key::pageDown:
      return step(press.key == Key::pageDown, visible_, state);
    case Key::home:
    case Key::end:
      return step(press.key == Key::end, rows_.size(), state);
    case Key::wheelUp:
      state.scroll -= std::min(state.scroll, kWheelRows);
      return;
    case Key::wheelDown:
      state.scroll += kWheelRows;
      return;
    case Key::left:
    case Key::right:
      return fold(press.key == Key::left, state);
    case Key::enter:
      if (const Row* const row = selected(state)) fold(!row->isFolded, state);
      return;
    default:
      return;
  }
}

/// Selects a row that many rows away, or the nearest one there is. Without a selection, begins at
/// the top of the window.
void List::step(bool forward, size_t rows, ViewState& state) {
  if (rows_.empty()) return;
  const std::optional<size_t> from = selectedRow(state);
  size_t to = std::min(state.scroll, rows_.size() - 1);
  if (from) to = forward ? std::min(*from + rows, rows_.size() - 1) : *from - std::min(*from, rows);
  if (!from && rows > 1) to = forward ? std::min(to + rows, rows_.size() - 1) : 0;
  while (!rows_[to].isSelectable()) {
    if (forward && to + 1 < rows_.size()) {
      ++to;
    } else {
      --to;  // a chart follows its direction
      forward = false;
    }
  }
  select(to, state);
}

/// Folds or unfolds the section of the selected row. The others stay as they are from then on.
void List::fold(bool isFolded, ViewState& state) {
  const Row* const row = selected(state);
  if (row == nullptr) return;
  for (const Row& other : rows_) {
    if (other.kind == Row::Kind::heading) {
      state.folded.try_emplace(other.section, other.isFolded);
    }
  }
  state.folded[row->section] = isFolded;
  if (isFolded) state.selected = RowId{row->section, ""};
  followsSelection_ = true;
}

}  // namespace halvermonte
