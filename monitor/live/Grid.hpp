// A screen as cells: what stands in each, and how it stands out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

struct WindowSize {
  size_t columns = 80, rows = 24;
};

/// How a cell stands out if the terminal can show it. The text has its meaning without.
enum class Look : uint8_t { plain, strong, faint, chart, warm, hot };

struct Cell {
  std::string text = " ";  ///< a character with its combining ones; "" right of a wide one
  Look look = Look::plain;
  bool isReversed = false;
};

class Grid {
 public:
  explicit Grid(WindowSize size);

  WindowSize size() const { return size_; }
  const Cell& at(size_t row, size_t column) const { return cells_[row * size_.columns + column]; }

  /// Writes printable text and returns the column behind it. What lies at `end` or beyond the grid
  /// is left out.
  size_t put(size_t row, size_t column, std::string_view text, Look look = Look::plain,
             size_t end = kNoEnd);
  /// The same, so that the text's last cell is left of `end`. REQUIRES: the text fits.
  void putRight(size_t row, size_t end, std::string_view text, Look look = Look::plain);
  /// Exchanges the colours of ink and ground.
  void reverse(size_t row, size_t column, size_t end);

  /// The rows as lines, without blanks at their ends.
  std::string text() const;

 private:
  static constexpr size_t kNoEnd = SIZE_MAX;
  Cell& cell(size_t row, size_t column) { return cells_[row * size_.columns + column]; }

  WindowSize size_;
  std::vector<Cell> cells_;
};

}  // namespace halvermonte
