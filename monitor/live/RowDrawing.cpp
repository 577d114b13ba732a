#include "monitor/live/RowDrawing.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "monitor/Line.hpp"
#include "monitor/ReadingTexts.hpp"
#include "monitor/live/Charts.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {
namespace {

constexpr size_t kHeadingIndent = 1, kSensorIndent = 3;
constexpr size_t kValueCells = 9, kFlagCells = 3, kTotalCells = 11;
constexpr size_t kShortestHistory = 6, kLongestHistory = 150;
constexpr size_t kTrafficCells = 38;  // the 75 rates of a record

std::string headingOf(const Row& row, const Pen& pen) {
  const Glyphs& glyphs = pen.glyphs();
  std::string text = row.isFolded ? glyphs.folded : glyphs.unfolded;
  text += " " + std::string(row.name);
  if (row.count > 0) text += " (" + std::to_string(row.count) + ")";
  if (row.sensor != nullptr) text += ": " + pen.shown(row.sensor->name);
  return text;
}

}  // namespace

std::string flagOf(const SensorView& sensor) {
  if (!sensor.isRead) return "?";
  if (sensor.number >= kHotDegrees) return "!!";
  return sensor.number >= kWarmDegrees ? "!" : "";
}

size_t nameCellsOf(const Row& row, const Pen& pen) {
  switch (row.kind) {
    case Row::Kind::heading:
      return kHeadingIndent + cells(headingOf(row, pen));
    case Row::Kind::temperature:
    case Row::Kind::fan:
      return kSensorIndent + cells(pen.shown(row.sensor->name));
    case Row::Kind::traffic:
    case Row::Kind::chart:
      return 0;
  }
  return 0;
}

/// The columns of a row in grid columns: names and readings always have theirs, and what is left is
/// for a bar and the history.
struct RowDrawing::Columns {
  Columns(const Place& place, size_t nameCells) {
    const size_t end = place.column + place.width;
    const size_t readings = kValueCells + kFlagCells;
    const size_t most = place.width - std::min(place.width, readings);
    nameEnd = place.column + std::min(nameCells, most);
    valueEnd = nameEnd + kValueCells;
    rest = std::min(valueEnd + kFlagCells, end);
    const size_t free = end - rest;
    if (free >= kBarCells + 1 + kShortestHistory) {
      bar = rest;
      history = rest + kBarCells + 1;
    } else if (free >= kShortestHistory) {
      history = rest;
    }
    if (history) historyCells = std::min(end - *history, kLongestHistory);
  }

  size_t nameEnd, valueEnd, rest;
  std::optional<size_t> bar, history;
  size_t historyCells = 0;
};

void RowDrawing::draw(const Row& row, const Place& place, bool isSelected) const {
  switch (row.kind) {
    case Row::Kind::heading:
      if (row.sensor == nullptr) {
        drawPlainHeading(row, place);
      } else {
        drawSensor(row, headingOf(row, pen_), kHeadingIndent, place);
      }
      break;
    case Row::Kind::temperature:
    case Row::Kind::fan:
      drawSensor(row, pen_.shown(row.sensor->name), kSensorIndent, place);
      break;
    case Row::Kind::traffic:
      drawTraffic(row, place);
      break;
    case Row::Kind::chart:
      drawChart(row, place);
      break;
  }
  if (!isSelected) return;
  grid_.put(place.row, place.column, ">");
  grid_.reverse(place.row, place.column, place.column + place.width);
}

void RowDrawing::drawTemperature(const SensorView& sensor, const std::string& name,
                                 const Place& place) const {
  const Row row{.kind = Row::Kind::heading, .sensor = &sensor};
  drawSensor(row, name, kHeadingIndent, place);
}

void RowDrawing::drawSensor(const Row& row, const std::string& name, size_t indent,
                            const Place& place) const {
  const Columns columns(place, nameCells_);
  const Look look = row.kind == Row::Kind::heading ? Look::strong : Look::plain;
  const bool isFan = row.section == Section::fans;
  grid_.put(place.row, place.column + indent, name, look, columns.nameEnd);
  drawValue(*row.sensor, isFan, columns, place.row);
  if (columns.bar && !row.sensor->isRead) {
    grid_.put(place.row, *columns.bar, kNotRead, Look::faint, columns.bar.value() + kBarCells);
  } else if (columns.bar && !isFan) {
    drawBar(grid_, place.row, *columns.bar, row.sensor->number, pen_.glyphs());
  }
  if (columns.history) drawHistory(row, columns, place.row);
}

void RowDrawing::drawValue(const SensorView& sensor, bool isFan, const Columns& columns,
                           size_t row) const {
  const std::string text = isFan ? fanText(sensor) : pen_.temperature(sensor.number);
  const std::string flag = isFan && sensor.isRead ? "" : flagOf(sensor);
  const bool isMarked = !isFan && sensor.number >= kWarmDegrees;
  const Look look = !sensor.isRead ? Look::faint : isMarked ? lookOf(sensor.number) : Look::plain;
  grid_.putRight(row, columns.valueEnd, text, look);
  grid_.put(row, columns.valueEnd, flag, look, columns.rest);
}

void RowDrawing::drawHistory(const Row& row, const Columns& columns, size_t line) const {
  constexpr float kLeastDegrees = 10, kLeastTurns = 100;
  const bool isFan = row.section == Section::fans;
  const Samples samples = history_.newest(row.track(), 2 * columns.historyCells);
  const Scale scale = scaleOf(samples, isFan ? kLeastTurns : kLeastDegrees);
  const auto lines = chartLines(samples, scale, columns.historyCells, 1, pen_.glyphs());
  const Look look = isFan ? Look::chart : lookOf(row.sensor->number);
  grid_.put(line, *columns.history, lines.front(), look);
}

void RowDrawing::drawPlainHeading(const Row& row, const Place& place) const {
  const size_t end = place.column + place.width;
  const std::string& scale = view_.disks.historyScaleText;
  const size_t next =
      grid_.put(place.row, place.column + kHeadingIndent, headingOf(row, pen_), Look::strong, end);
  if (row.section != Section::disks || scale.empty()) return;
  grid_.put(place.row, next + 2, "charts up to " + pen_.shown(scale) + "/s", Look::faint, end);
}

void RowDrawing::drawTraffic(const Row& row, const Place& place) const {
  const Columns columns(place, nameCells_);
  const size_t end = place.column + place.width;
  grid_.put(place.row, place.column + kSensorIndent, row.name, Look::plain, columns.nameEnd);
  const std::string rate = view_.number > 0 ? pen_.shown(row.traffic->rateText) : "-";
  grid_.putRight(place.row, columns.valueEnd, rate);
  const std::string total = pen_.shown(row.traffic->totalText);
  const size_t totalEnd = columns.valueEnd + kTotalCells;
  if (totalEnd > end) return;
  grid_.putRight(place.row, totalEnd, total, Look::faint);
  if (end < totalEnd + 1 + kShortestHistory || row.hasChartBelow) return;
  const size_t cells = std::min(end - totalEnd - 1, kTrafficCells);
  const auto lines =
      chartLines(ratesOf(*row.traffic), {0, view_.disks.historyScale}, cells, 1, pen_.glyphs());
  grid_.put(place.row, totalEnd + 1, lines.front(), Look::chart);
}

void RowDrawing::drawChart(const Row& row, const Place& place) const {
  const size_t cells = std::min(place.width - kSensorIndent, kTrafficCells);
  const auto lines = chartLines(ratesOf(*row.traffic), {0, view_.disks.historyScale}, cells,
                                kTallChart, pen_.glyphs());
  grid_.put(place.row, place.column + kSensorIndent, lines[row.line], Look::chart);
}

Samples RowDrawing::ratesOf(const DiskTraffic& traffic) {
  Samples samples;
  for (const float rate : traffic.history) {
    samples.push_back(rate >= 0 ? std::optional(rate) : std::nullopt);
  }
  return samples;
}

}  // namespace halvermonte
