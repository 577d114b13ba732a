#include "monitor/live/Panes.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ratio>
#include <string_view>
#include <utility>

#include "monitor/HostTexts.hpp"
#include "monitor/Line.hpp"
#include "monitor/ReadingTexts.hpp"

namespace halvermonte {
namespace {

using std::chrono::seconds;
using std::chrono::steady_clock;

constexpr std::string_view kBetween = "   ";

std::string titleOf(const PassView& view) {
  return view.isSimulated ? "simulated: " + view.name : view.name;
}

std::string costText(const PassView& view) {
  const std::chrono::duration<double, std::milli> cost = view.cost;
  return "pass " + oneDecimal(cost.count()) + " ms";
}

/// The facts in as many lines as the width asks for. The watched process comes first.
std::vector<std::string> factLines(const PassView& view, const Pen& pen, size_t width) {
  std::vector<std::string> facts = hostTexts(view);
  if (view.process) std::ranges::rotate(facts, facts.end() - 1);
  std::vector<std::string> lines;
  for (const std::string& fact : facts) {
    const std::string text = pen.shown(fact);
    if (!lines.empty() && cells(lines.back()) + kBetween.size() + cells(text) <= width) {
      lines.back().append(kBetween).append(text);
    } else {
      lines.push_back(text);
    }
  }
  return lines;
}

/// How many rows of facts a window of that height has room for.
size_t factRows(size_t rows) {
  if (rows >= 16) return 2;
  return rows >= 10 ? 1 : 0;
}

struct Hint {
  std::string_view key, does;
};
constexpr Hint kHints[] = {{"?", "help"}, {"q", "quit"}, {"/", "filter"},
                           {"s", "sort"}, {"f", "unit"}, {"p", "pause"}};
constexpr Hint kHelp[] = {
    {"Up, Down", "select a row; Escape selects none"},
    {"Page Up, Page Down, wheel", "scroll"},
    {"Home, End", "go to the first or the last row"},
    {"Left, Right, Enter", "fold or unfold a section"},
    {"/", "show only sensors with a text in their name"},
    {"s", "sort by name or by heat"},
    {"f", "degrees Celsius or Fahrenheit"},
    {"p", "pause: no passes until the next p"},
    {"q", "quit"},
    {"?", "the machine no longer gives the reading"},
};

std::string rangeText(const Row& row, const Pen& pen, const Extremes& extremes) {
  const auto text = [&](int32_t number) {
    return row.section == Section::fans ? std::to_string(number) + " rpm" : pen.temperature(number);
  };
  return "minimum " + text(extremes.lowest) + ", maximum " + text(extremes.highest) + ", average " +
         text(static_cast<int32_t>(std::lround(extremes.average()))) + " since the start";
}

/// Why the shown number is not what the machine gives; "" if it is.
std::string remarkOn(const SensorView& sensor, const Pen& pen) {
  constexpr int32_t kFarFall = 25;
  if (!sensor.isRead) return std::string(kNotRead) + ": the machine gives no reading";
  if (!sensor.reading) return "";
  const std::string read = "the machine gives " + pen.temperature(*sensor.reading) + ": ";
  if (sensor.number - *sensor.reading >= kFarFall) {
    return read + "a fall of more than 25 degrees is shown as one degree a pass";
  }
  return read + "a processor that cools fast is held for a while";
}

std::vector<std::string> trafficLines(const Row& row, const PassView& view) {
  if (row.traffic == nullptr) return {std::string(row.name)};
  const std::string rate = view.number > 0 ? row.traffic->rateText : "-";
  return {"Disks: " + std::string(row.name),
          rate + " now, " + row.traffic->totalText + " in total, of all drives together"};
}

}  // namespace

std::string ageText(steady_clock::duration age) {
  const int64_t whole = std::max<int64_t>(std::chrono::floor<seconds>(age).count(), 0);
  if (whole < 120) return std::to_string(whole) + " s ago";
  if (whole < 7200) return std::to_string(whole / 60) + " min ago";
  return std::to_string(whole / 3600) + " h ago";
}

steady_clock::duration untilNextAge(steady_clock::duration age) {
  constexpr steady_clock::duration kSlack = std::chrono::milliseconds(500);
  const auto whole = std::max(std::chrono::floor<seconds>(age), seconds(0));
  return whole + seconds(1) + kSlack - age;
}

size_t drawHeader(Grid& grid, const Pen& pen, const PassView& view, bool isPaused,
                  steady_clock::time_point now) {
  const size_t width = grid.size().columns;
  const std::string title = pen.shown(titleOf(view));
  std::string status = (isPaused ? "paused, " : "") + ageText(now - view.counted);
  const std::string longer = status + ", " + costText(view);
  if (cells(title) + kBetween.size() + cells(longer) <= width) status = longer;
  const size_t statusStart = width - std::min(width, cells(status));
  grid.put(0, 0, title, Look::strong, statusStart - std::min<size_t>(statusStart, 1));
  grid.putRight(0, width, status, isPaused ? Look::strong : Look::faint);
  std::vector<std::string> facts = factLines(view, pen, width);
  facts.resize(std::min(facts.size(), factRows(grid.size().rows)));
  size_t row = 1;
  for (const std::string& line : facts) grid.put(row++, 0, line);
  return row;
}

void drawFooter(Grid& grid, const Pen& pen, const ViewState& state, const std::string& message) {
  const size_t row = grid.size().rows - 1;
  if (state.isTyping) {
    grid.put(row, 0, "/" + pen.shown(state.filter) + "_   Enter keeps it, Escape clears it");
    return;
  }
  size_t column = 0;
  const bool isShort = !message.empty() || !state.filter.empty();
  for (const Hint& hint : kHints) {
    if (isShort && hint.key == "/") break;
    column = grid.put(row, column, hint.key, Look::strong);
    column = grid.put(row, column + 1, hint.does, Look::faint) + 3;
  }
  if (!state.filter.empty()) {
    column = grid.put(row, column, "only \"" + pen.shown(state.filter) + "\" (Escape)") + 3;
  }
  grid.put(row, column, pen.shown(message), Look::strong);
}

std::vector<std::string> detailLines(const Row& row, const Pen& pen, const PassView& view,
                                     const History& history, const Origins& origins) {
  if (row.sensor == nullptr) return trafficLines(row, view);
  const SensorView& sensor = *row.sensor;
  std::vector<std::string> lines = {sensor.name};
  if (const Extremes* const extremes = history.extremes(row.track())) {
    lines.push_back(rangeText(row, pen, *extremes));
  }
  const auto origin = origins.find(row.track());
  if (origin != origins.end()) lines.push_back(origin->second.text);
  if (const std::string remark = remarkOn(sensor, pen); !remark.empty()) lines.push_back(remark);
  return lines;
}

std::vector<std::string> helpLines(const Pen& pen) {
  std::vector<std::string> lines;
  size_t keyCells = 0;
  for (const Hint& hint : kHelp) keyCells = std::max(keyCells, cells(hint.key));
  for (const Hint& hint : kHelp) {
    lines.push_back(leftAligned(hint.key, keyCells) + "  " + std::string(hint.does));
  }
  lines.push_back(leftAligned("!, !!", keyCells) + "  warm, from " + pen.temperature(kWarmDegrees) +
                  "; hot, from " + pen.temperature(kHotDegrees));
  return lines;
}

}  // namespace halvermonte
