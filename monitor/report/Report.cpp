#include "monitor/report/Report.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "halvermonte/Readings.hpp"
#include "monitor/report/Columns.hpp"
#include "monitor/report/ReadingTexts.hpp"
#include "platform/Counted.hpp"

namespace halvermonte {
namespace {

constexpr size_t kBarCells = 11;  // 10 degrees each
constexpr size_t kDefaultWidth = 80;
constexpr size_t kGraphSamples = 75;  // what a history holds
constexpr int kWarmDegrees = 80, kHotDegrees = 95;

// The characters that draw, and ASCII ones for terminals without Unicode.
struct Glyphs {
  const char* mark;
  const char* barFilled;
  const char* barEmpty;
  const char* graphLevels[8];
};
constexpr Glyphs kUnicodeGlyphs{"•", "━", "─", {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"}};
constexpr Glyphs kAsciiGlyphs{"*", "=", "-", {"_", ".", ":", "-", "=", "+", "*", "#"}};

std::string joined(const std::string& first, const char* between, const std::string& second) {
  return first.empty() || second.empty() ? first + second : first + between + second;
}

std::string percentText(float percent) {
  char text[64];
  const auto fixed = std::chars_format::fixed;
  return std::string(text, std::to_chars(text, text + sizeof text, percent, fixed, 1).ptr) + " %";
}

std::string repeated(const char* glyph, size_t count) {
  std::string text;
  for (size_t i = 0; i < count; ++i) text += glyph;
  return text;
}

Ink inkOf(int32_t degrees) {
  if (degrees >= kHotDegrees) return Ink::hot;
  return degrees >= kWarmDegrees ? Ink::warm : Ink::plain;
}

/// How many cells of a bar are filled.
size_t filledCells(int32_t degrees) {
  constexpr int32_t kMost = 10 * static_cast<int32_t>(kBarCells);
  const int32_t tens = (std::clamp(degrees, 0, kMost) + 5) / 10;
  return std::min(static_cast<size_t>(tens), kBarCells);
}

/// 0 to 7; 0 is for no traffic at all.
size_t graphLevel(float rate, float scale) {
  if (!(rate > 0) || !(scale > 0)) return 0;
  return static_cast<size_t>(std::clamp(std::ceil(rate / scale * 7), 1.0F, 7.0F));
}

class Report {
 public:
  Report(const PassView& view, const ReportStyle& style)
      : view_(view), style_(style), glyphs_(style.unicode ? kUnicodeGlyphs : kAsciiGlyphs) {}

  std::vector<Line> lines() {
    addHeading(view_.title);
    addFacts();
    addException();
    addFans();
    addDisks();
    addTemperatures();
    return fitted();
  }

 private:
  size_t width() const { return style_.columns ? style_.columns : kDefaultWidth; }
  bool isHeightLimited() const { return style_.rows != 0; }
  std::string shown(std::string_view text) const { return printable(text, style_.unicode); }

  void add(Line line) { lines_.push_back(std::move(line)); }
  void add(const std::vector<Line>& lines) {
    lines_.insert(lines_.end(), lines.begin(), lines.end());
  }
  void addHeading(const std::string& text) { add(Line{{shown(text), Ink::strong}}); }

  void addGap() {
    constexpr size_t kAmpleRows = 20;
    if (!isHeightLimited() || style_.rows >= kAmpleRows) add(Line{});
  }

  void addFacts() {
    std::string line;
    for (const std::string& fact :
         {view_.hostName, processorText(), uptimeText(), memoryText(), processText()}) {
      const std::string longer = joined(line, "   ", shown(fact));
      if (!line.empty() && cells(longer) > width()) {
        add(Line{{line}});
        line = shown(fact);
      } else {
        line = longer;
      }
    }
    if (!line.empty()) add(Line{{line}});
  }

  std::string processorText() const {
    const int32_t physical = view_.cores, logical = view_.logicalCores;
    std::string cores;
    if (physical > 1 || logical > 1) cores = counted(physical, "core");
    if (logical > physical) cores = joined(cores, ", ", counted(logical, "thread"));
    return joined(view_.processor, ", ", cores);
  }

  std::string uptimeText() const { return view_.uptime.empty() ? "" : "up " + view_.uptime; }

  std::string memoryText() const {
    if (view_.memoryTotal.empty()) return "";
    return "memory " + view_.memoryUsed + " of " + view_.memoryTotal;
  }

  std::string processText() const {
    if (!view_.process) return "";
    const auto [identifier, percent, hasEnded] = *view_.process;
    const std::string name = "process " + std::to_string(identifier);
    if (hasEnded) return name + " has ended";
    return name + ": " + (percent ? percentText(*percent) + " of one core" : "not known yet");
  }

  void addException() {
    if (!view_.exception) return;
    add(Line{{"this pass ended early: " + shown(*view_.exception), Ink::hot}});
  }

  void addFans() {
    addGap();
    addHeading("Fans");
    size_t nameCells = 0;
    for (const Reading& fan : view_.fans) nameCells = std::max(nameCells, cells(shown(fan.name)));
    std::vector<Line> rows;
    for (const Reading& fan : view_.fans) {
      rows.push_back({{"  " + leftAligned(shown(fan.name), nameCells) +
                       rightAligned(fanText(fan.number), 11)}});
    }
    if (rows.empty()) return add(Line{{"  none"}});
    const Columns columns(std::move(rows), width());
    add(isHeightLimited() ? columns.lines(1) : columns.oneColumn());
  }

  void addDisks() {
    addGap();
    const std::string& scale = view_.disks.historyScaleText;
    add(Line{{"Disks            now       total", Ink::strong},
             {scale.empty() ? "" : "   graph up to " + scale + "/s", Ink::faint}});
    addDisk("read", view_.disks.read);
    addDisk("write", view_.disks.written);
  }

  void addDisk(const char* direction, const DiskTraffic& traffic) {
    const std::string_view rate = view_.number > 0 ? traffic.rateText : std::string_view("-");
    const std::string row = "  " + leftAligned(direction, 6) + rightAligned(shown(rate), 12) +
                            rightAligned(shown(traffic.totalText), 12) + "   ";
    const size_t room = std::min(width() - std::min(width(), cells(row)), kGraphSamples);
    add(Line{{row + graph(traffic.history, room)}});
  }

  // The newest rates, oldest first.
  std::string graph(const std::vector<float>& history, size_t room) const {
    std::string drawn;
    for (size_t i = history.size() - std::min(room, history.size()); i < history.size(); ++i) {
      const size_t level = graphLevel(history[i], view_.disks.historyScale);
      if (history[i] >= 0) drawn += glyphs_.graphLevels[level];
    }
    return drawn;
  }

  void addTemperatures() {
    addGap();
    const std::vector<Temperature> rows =
        temperatureRows(view_.temperatures, view_.shortTemperatures);
    const bool isAnyMarked = !rows.empty() && rows.front().isMarked;
    const std::string legend = std::string("   ") + glyphs_.mark + " in the short list";
    add(Line{{"Temperatures", Ink::strong}, {isAnyMarked ? legend : "", Ink::faint}});
    if (rows.empty()) return add(Line{{"  none"}});
    const Columns withBars(temperatureCells(rows, true), width());
    if (!isHeightLimited()) return add(withBars.oneColumn());
    const size_t free = style_.rows - std::min(style_.rows, lines_.size());
    if (withBars.rowsNeeded() <= free) return add(withBars.lines(free));
    add(Columns(temperatureCells(rows, false), width()).linesThatFit(free));
  }

  std::vector<Line> temperatureCells(const std::vector<Temperature>& rows, bool withBars) const {
    size_t nameCells = 0;
    for (const Temperature& row : rows) nameCells = std::max(nameCells, cells(shown(row.name)));
    std::vector<Line> all;
    for (const Temperature& row : rows) all.push_back(temperatureCell(row, nameCells, withBars));
    return all;
  }

  Line temperatureCell(const Temperature& row, size_t nameCells, bool withBar) const {
    const Ink ink = inkOf(row.degrees);
    const std::string value = temperatureText(row.degrees, style_.fahrenheit, style_.unicode);
    Line cell = {{row.isMarked ? std::string(glyphs_.mark) + " " : "  "},
                 {leftAligned(shown(row.name), nameCells)},
                 {rightAligned(value, 8), ink}};
    if (!withBar) return cell;
    const size_t filled = filledCells(row.degrees);
    cell.push_back({"  " + repeated(glyphs_.barFilled, filled), ink});
    cell.push_back({repeated(glyphs_.barEmpty, kBarCells - filled), Ink::faint});
    return cell;
  }

  std::vector<Line> fitted() {
    if (isHeightLimited() && lines_.size() > style_.rows) lines_.resize(style_.rows);
    if (style_.columns) {
      for (Line& line : lines_) line = cut(line, style_.columns);
    }
    return std::move(lines_);
  }

  const PassView& view_;
  const ReportStyle& style_;
  const Glyphs& glyphs_;
  std::vector<Line> lines_;
};

}  // namespace

std::vector<Line> reportLines(const PassView& view, const ReportStyle& style) {
  return Report(view, style).lines();
}

}  // namespace halvermonte
