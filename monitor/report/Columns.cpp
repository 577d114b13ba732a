#include "monitor/report/Columns.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace halvermonte {
namespace {

constexpr size_t kGap = 3;  // between columns

size_t quotientRoundedUp(size_t count, size_t divisor) { return (count + divisor - 1) / divisor; }

}  // namespace

Columns::Columns(std::vector<Line> cells, size_t width) : cells_(std::move(cells)), width_(width) {}

size_t Columns::columnsThatFit() const {
  return std::max<size_t>(1, (width_ + kGap) / (cells(cells_.front()) + kGap));
}

size_t Columns::rowsNeeded() const { return quotientRoundedUp(cells_.size(), columnsThatFit()); }

std::vector<Line> Columns::lines(size_t rowsWanted) const {
  const size_t count = cells_.size();
  const size_t columns = quotientRoundedUp(count, std::max(rowsWanted, rowsNeeded()));
  const size_t rows = quotientRoundedUp(count, columns);
  std::vector<Line> lines(rows);
  for (size_t i = 0; i < count; ++i) {
    Line& line = lines[i % rows];
    if (i >= rows) line.push_back({std::string(kGap, ' ')});
    line.insert(line.end(), cells_[i].begin(), cells_[i].end());
  }
  return lines;
}

std::vector<Line> Columns::linesThatFit(size_t rows) const {
  if (rowsNeeded() <= rows) return lines(rows);
  const size_t shown = rows > 1 ? columnsThatFit() * (rows - 1) : 0;
  const std::vector<Line> first(cells_.begin(), cells_.begin() + static_cast<ptrdiff_t>(shown));
  std::vector<Line> kept;
  if (shown > 0) kept = Columns(first, width_).lines(rows - 1);
  const std::string note = "  and " + std::to_string(cells_.size() - shown) + " more";
  kept.push_back({{note, Ink::faint}});
  return kept;
}

}  // namespace halvermonte
