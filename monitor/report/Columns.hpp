// Cells of equal width, laid out in columns.
#pragma once

#include <cstddef>
#include <vector>

#include "monitor/Line.hpp"

namespace halvermonte {

/// The cells run down the columns, in no more columns than fit into the width.
class Columns {
 public:
  /// REQUIRES: at least one cell.
  Columns(std::vector<Line> cells, size_t width);

  /// How few rows hold all cells.
  size_t rowsNeeded() const;
  /// The lines, in as few columns as that many rows allow; more rows if the width asks for them.
  std::vector<Line> lines(size_t rowsWanted) const;
  /// The lines, in one column.
  std::vector<Line> oneColumn() const { return lines(cells_.size()); }
  /// No more lines than `rows`, but at least one; the last one counts the cells that do not fit.
  std::vector<Line> linesThatFit(size_t rows) const;

 private:
  size_t columnsThatFit() const;

  std::vector<Line> cells_;
  size_t width_;
};

}  // namespace halvermonte
