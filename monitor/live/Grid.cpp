#include "monitor/live/Grid.hpp"

#include <algorithm>

#include "halvermonte/UTF8.hpp"
#include "monitor/Line.hpp"

namespace halvermonte {
namespace {

/// Takes the next character off the text, as it stands there.
std::string_view takeCharacter(std::string_view& text) {
  const std::string_view before = text;
  takeCodePoint(text);
  return before.substr(0, before.size() - text.size());
}

}  // namespace

Grid::Grid(WindowSize size) : size_(size), cells_(size.columns * size.rows) {}

size_t Grid::put(size_t row, size_t column, std::string_view text, Look look, size_t end) {
  if (row >= size_.rows) return column;
  end = std::min(end, size_.columns);
  while (!text.empty()) {
    const std::string_view character = takeCharacter(text);
    const size_t width = cells(character);
    if (width == 0) {
      if (column > 0 && column <= end) cell(row, column - 1).text += character;
      continue;
    }
    if (column + width > end) break;
    cell(row, column) = {std::string(character), look};
    if (width == 2) cell(row, column + 1) = {"", look};
    column += width;
  }
  return column;
}

void Grid::putRight(size_t row, size_t end, std::string_view text, Look look) {
  put(row, end - std::min(end, cells(text)), text, look, end);
}

void Grid::reverse(size_t row, size_t column, size_t end) {
  for (; column < std::min(end, size_.columns); ++column) cell(row, column).isReversed = true;
}

std::string Grid::text() const {
  std::string text;
  for (size_t row = 0; row < size_.rows; ++row) {
    std::string line;
    for (size_t column = 0; column < size_.columns; ++column) line += at(row, column).text;
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

}  // namespace halvermonte
