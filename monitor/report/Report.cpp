#include "monitor/report/Report.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "monitor/HostTexts.hpp"
#include "monitor/ReadingTexts.hpp"

namespace halvermonte {
namespace {

constexpr size_t kBarCells = 11;  // 10 degrees each
constexpr size_t kWidth = 80;
constexpr size_t kGraphSamples = 75;  // what a history holds

// The characters that draw, and ASCII ones for terminals without Unicode.
struct Glyphs {
  const char* mark;
  const char* barFilled;
  const char* barEmpty;
  const char* graphLevels[8];
};
constexpr Glyphs kUnicodeGlyphs{"•", "━", "─", {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"}};
constexpr Glyphs kAsciiGlyphs{"*", "=", "-", {"_", ".", ":", "-", "=", "+", "*", "#"}};

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

std::string remarkOn(const SensorView& sensor) {
  return sensor.isRead ? "" : "  " + std::string(kNotRead);
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
    return std::move(lines_);
  }

 private:
  std::string shown(std::string_view text) const { return printable(text, style_.unicode); }

  void add(Line line) { lines_.push_back(std::move(line)); }
  void addHeading(const std::string& text) { add(Line{{shown(text), Ink::strong}}); }

  void addGap() { add(Line{}); }

  void addFacts() {
    std::string line;
    for (const std::string& fact : hostTexts(view_)) {
      const std::string longer = line.empty() ? shown(fact) : line + "   " + shown(fact);
      if (!line.empty() && cells(longer) > kWidth) {
        add(Line{{line}});
        line = shown(fact);
      } else {
        line = longer;
      }
    }
    if (!line.empty()) add(Line{{line}});
  }

  void addException() {
    if (!view_.exception) return;
    add(Line{{"this pass ended early: " + shown(*view_.exception), Ink::hot}});
  }

  void addFans() {
    addGap();
    addHeading("Fans");
    if (view_.fans.empty()) add(Line{{"  none"}});
    const size_t nameCells = widestName(view_.fans);
    for (const SensorView& fan : view_.fans) {
      add(Line{{"  " + leftAligned(shown(fan.name), nameCells) + rightAligned(fanText(fan), 11) +
                remarkOn(fan)}});
    }
  }

  size_t widestName(const std::vector<SensorView>& sensors) const {
    size_t widest = 0;
    for (const SensorView& sensor : sensors) widest = std::max(widest, cells(shown(sensor.name)));
    return widest;
  }

  void addDisks() {
    addGap();
    if (view_.drives == 0) {
      addHeading("Disks");
      return add(Line{{"  none"}});
    }
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
    const size_t room = std::min(kWidth - std::min(kWidth, cells(row)), kGraphSamples);
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
    std::vector<SensorView> rows = view_.temperatures;
    std::ranges::stable_partition(rows, isMarked);
    const bool isAnyMarked = !rows.empty() && isMarked(rows.front());
    const std::string legend = std::string("   ") + glyphs_.mark + " in the short list";
    add(Line{{"Temperatures", Ink::strong}, {isAnyMarked ? legend : "", Ink::faint}});
    if (rows.empty()) add(Line{{"  none"}});
    const size_t nameCells = widestName(rows);
    for (const SensorView& row : rows) addTemperature(row, nameCells);
  }

  static bool isMarked(const SensorView& sensor) { return sensor.lists != InLists::full; }

  void addTemperature(const SensorView& row, size_t nameCells) {
    const Ink ink = inkOf(row.number);
    const std::string value = temperatureText(row.number, style_.fahrenheit, style_.unicode);
    const size_t filled = filledCells(row.number);

    add(Line{{isMarked(row) ? std::string(glyphs_.mark) + " " : "  "},
             {leftAligned(shown(row.name), nameCells)},
             {rightAligned(value, 8), ink},
             {"  " + repeated(glyphs_.barFilled, filled), ink},
             {repeated(glyphs_.barEmpty, kBarCells - filled), Ink::faint},
             {remarkOn(row)}});
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
