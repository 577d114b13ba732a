// Draws a row of the list: its name, its reading, a bar, and what was read before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "monitor/PassView.hpp"
#include "monitor/live/Charts.hpp"
#include "monitor/live/Grid.hpp"
#include "monitor/live/History.hpp"
#include "monitor/live/Pen.hpp"
#include "monitor/live/Rows.hpp"

namespace halvermonte {

/// Where a row is drawn.
struct Place {
  size_t row = 0, column = 0, width = 0;
};

/// "!" for a warm reading, "!!" for a hot one, "?" for one that is no longer read.
std::string flagOf(const SensorView& sensor);

class RowDrawing {
 public:
  /// `nameCells` is the width of the names' column.
  RowDrawing(Grid& grid, const Pen& pen, const PassView& view, const History& history,
             size_t nameCells)
      : grid_(grid), pen_(pen), view_(view), history_(history), nameCells_(nameCells) {}

  void draw(const Row& row, const Place& place, bool isSelected) const;
  /// A temperature under a name of its own.
  void drawTemperature(const SensorView& sensor, const std::string& name, const Place& place) const;

 private:
  struct Columns;

  void drawSensor(const Row& row, const std::string& name, size_t indent, const Place& place) const;
  void drawValue(const SensorView& sensor, bool isFan, const Columns& columns, size_t row) const;
  void drawHistory(const Row& row, const Columns& columns, size_t line) const;
  void drawPlainHeading(const Row& row, const Place& place) const;
  void drawTraffic(const Row& row, const Place& place) const;
  void drawChart(const Row& row, const Place& place) const;
  static Samples ratesOf(const DiskTraffic& traffic);

  Grid& grid_;
  const Pen& pen_;
  const PassView& view_;
  const History& history_;
  size_t nameCells_;
};

/// How many cells the name of a row takes.
size_t nameCellsOf(const Row& row, const Pen& pen);

}  // namespace halvermonte
