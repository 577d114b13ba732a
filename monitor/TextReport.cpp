#include "monitor/TextReport.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "monitor/Readings.hpp"

namespace halvermonte {

namespace {

constexpr size_t kGap = 3;        // between columns
constexpr size_t kBarCells = 11;  // 10 degrees each
constexpr size_t kDefaultWidth = 80;
constexpr size_t kGraphSamples = 75;  // what a history holds
constexpr int kWarmDegrees = 80, kHotDegrees = 95;

// The characters that draw: an ASCII one for terminals without Unicode.
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

std::string countText(int32_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string percentText(float percent) {
  char text[64];
  const auto fixed = std::chars_format::fixed;
  return std::string(text, std::to_chars(text, text + sizeof text, percent, fixed, 1).ptr) + " %";
}

// A cell of a column layout, all of one layout equally wide.
using Cells = std::vector<Line>;

class Report {
 public:
  Report(const StatisticsData& record, const ReportSubject& subject, const ReportStyle& style)
      : record_(record),
        subject_(subject),
        style_(style),
        glyphs_(style.unicode ? kUnicodeGlyphs : kAsciiGlyphs) {}

  std::vector<Line> lines() {
    heading(subject_.title);
    facts();
    fans();
    disks();
    temperatures();
    return fitted();
  }

 private:
  size_t width() const { return style_.columns ? style_.columns : kDefaultWidth; }
  bool isHeightLimited() const { return style_.rows != 0; }

  void add(Line line) { lines_.push_back(std::move(line)); }
  void heading(const std::string& text) { add({{printable(text, style_.unicode), Ink::strong}}); }

  void gap() {
    constexpr size_t kAmpleRows = 20;
    if (!isHeightLimited() || style_.rows >= kAmpleRows) add({});
  }

  void facts() {
    std::vector<std::string> facts = {hostName(), processor(), uptime(), memory(), process()};
    std::string line;
    for (const std::string& fact : facts) {
      const std::string longer = joined(line, "   ", printable(fact, style_.unicode));
      if (!line.empty() && cells(longer) > width()) {
        add({{line}});
        line = printable(fact, style_.unicode);
      } else {
        line = longer;
      }
    }
    if (!line.empty()) add({{line}});
    if (!subject_.trouble.empty()) {
      add({{"this pass ended early: " + printable(subject_.trouble, style_.unicode), Ink::hot}});
    }
  }

  std::string hostName() const { return std::string(record_.hostName().view()); }

  std::string processor() const {
    const int32_t logical = record_.summary_cpuLogicalCores().int32Value();
    std::string cores;
    if (subject_.cores > 1 || logical > 1) cores = countText(subject_.cores, "core");
    if (logical > subject_.cores) cores = joined(cores, ", ", countText(logical, "thread"));
    return joined(subject_.processor, ", ", cores);
  }

  std::string uptime() const {
    const Text text = record_.uptimeText();
    return text.view().empty() ? "" : "up " + std::string(text.view());
  }

  std::string memory() const {
    const Text used = record_.summary_memoryUsedText(), total = record_.summary_memoryTotalText();
    if (total.view().empty()) return "";
    return "memory " + std::string(used.view()) + " of " + std::string(total.view());
  }

  std::string process() const {
    if (!subject_.process) return "";
    const auto [identifier, percent] = *subject_.process;
    return "process " + std::to_string(identifier) + ": " +
           (percent < 0 ? "not known" : percentText(percent) + " of one core");
  }

  void fans() {
    gap();
    heading("Fans");
    const std::vector<Reading> fans = fanReadings(record_);
    if (fans.empty()) return add({{"  none"}});
    size_t nameCells = 0;
    for (const Reading& fan : fans) nameCells = std::max(nameCells, cells(shownName(fan)));
    Cells columns;
    for (const Reading& fan : fans) {
      columns.push_back({{"  " + leftAligned(shownName(fan), nameCells) +
                          rightAligned(printable(fanText(fan.value), style_.unicode), 11)}});
    }
    grid(columns, isHeightLimited() ? 1 : 0);
  }

  std::string shownName(const Reading& reading) const {
    return printable(reading.name, style_.unicode);
  }

  void disks() {
    gap();
    const std::string scale(record_.diskIO_activitiesMaxText().view());
    add({{"Disks            now       total", Ink::strong},
         {scale.empty() ? "" : "   graph up to " + scale + "/s", Ink::faint}});
    const Array histories = record_.diskIO_activities();
    disk("read", record_.diskIO_speedReadText(), record_.diskIO_readText(), histories, 1);
    disk("write", record_.diskIO_speedWriteText(), record_.diskIO_writeText(), histories, 0);
  }

  void disk(const char* direction, const Text& speed, const Text& total, const Array& histories,
            size_t place) {
    const std::string_view rate = subject_.ratesKnown ? speed.view() : "-";
    std::string row = "  " + leftAligned(direction, 6) +
                      rightAligned(printable(rate, style_.unicode), 12) +
                      rightAligned(printable(total.view(), style_.unicode), 12) + "   ";
    const size_t room = std::min(width() - std::min(width(), cells(row)), kGraphSamples);
    if (place < histories.size()) row += graph(histories.elements()[place].asArray(), room);
    add({{row}});
  }

  // The newest samples, oldest first; a slot that holds none yet has -1.
  std::string graph(const Array& history, size_t room) const {
    const float scale = record_.diskIO_activitiesMax().float32Value();
    const std::vector<Value>& samples = history.elements();
    std::string drawn;
    for (size_t i = samples.size() - std::min(room, samples.size()); i < samples.size(); ++i) {
      const float sample = samples[i].asNumber().float32Value();
      if (sample >= 0) drawn += glyphs_.graphLevels[graphLevel(sample, scale)];
    }
    return drawn;
  }

  // The lowest level is for no traffic at all.
  static size_t graphLevel(float sample, float scale) {
    if (!(sample > 0) || !(scale > 0)) return 0;
    return static_cast<size_t>(std::clamp(std::ceil(sample / scale * 7), 1.0F, 7.0F));
  }

  void temperatures() {
    gap();
    const std::vector<Reading> readings = temperatureReadings(record_);
    add({{"Temperatures", Ink::strong},
         {!readings.empty() && readings.front().isMarked
              ? std::string("   ") + glyphs_.mark + " in the short list"
              : "",
          Ink::faint}});
    if (readings.empty()) return add({{"  none"}});
    if (!isHeightLimited()) return grid(temperatureCells(readings, true), 0);
    const size_t free = style_.rows - std::min(style_.rows, lines_.size());
    const Cells withBars = temperatureCells(readings, true);
    if (rowsNeeded(withBars) <= free) return grid(withBars, free);
    gridAsFarAsItFits(temperatureCells(readings, false), free);
  }

  Cells temperatureCells(const std::vector<Reading>& readings, bool withBars) const {
    size_t nameCells = 0;
    for (const Reading& reading : readings) {
      nameCells = std::max(nameCells, cells(shownName(reading)));
    }
    Cells cells;
    for (const Reading& reading : readings) {
      cells.push_back(temperatureCell(reading, nameCells, withBars));
    }
    return cells;
  }

  Line temperatureCell(const Reading& reading, size_t nameCells, bool withBar) const {
    const int64_t degrees = wholeNumber(reading.value).value_or(0);
    const Ink ink = degrees >= kHotDegrees    ? Ink::hot
                    : degrees >= kWarmDegrees ? Ink::warm
                                              : Ink::plain;
    const std::string value = printable(
        temperatureText(reading.value, style_.fahrenheit, style_.unicode), style_.unicode);
    Line cell = {{reading.isMarked ? std::string(glyphs_.mark) + " " : "  "},
                 {leftAligned(shownName(reading), nameCells)},
                 {rightAligned(value, 8), ink}};
    if (!withBar) return cell;
    const int64_t tens = (std::clamp<int64_t>(degrees, 0, 10 * kBarCells) + 5) / 10;
    const size_t filled = std::min(static_cast<size_t>(tens), kBarCells);
    cell.push_back({"  " + repeated(glyphs_.barFilled, filled), ink});
    cell.push_back({repeated(glyphs_.barEmpty, kBarCells - filled), Ink::faint});
    return cell;
  }

  static std::string repeated(const char* glyph, size_t count) {
    std::string text;
    while (count-- > 0) text += glyph;
    return text;
  }

  size_t columnsThatFit(const Cells& content) const {
    return std::max<size_t>(1, (width() + kGap) / (cells(content.front()) + kGap));
  }

  size_t rowsNeeded(const Cells& content) const {
    const size_t columns = columnsThatFit(content);
    return (content.size() + columns - 1) / columns;
  }

  // Lays the content out in no more columns than the wanted number of rows asks for; 0 asks for
  // one. It runs down the columns. Where the screen has no room for all, the last row tells.
  void grid(const Cells& content, size_t rowsWanted) {
    const size_t count = content.size();
    size_t rows = rowsWanted == 0 ? count : std::max(rowsWanted, rowsNeeded(content));
    const size_t columns = (count + rows - 1) / rows;
    rows = (count + columns - 1) / columns;
    for (size_t row = 0; row < rows; ++row) {
      Line line;
      for (size_t i = row; i < count; i += rows) {
        if (i != row) line.push_back({std::string(kGap, ' ')});
        line.insert(line.end(), content[i].begin(), content[i].end());
      }
      add(std::move(line));
    }
  }

  void gridAsFarAsItFits(Cells content, size_t free) {
    if (rowsNeeded(content) <= free) return grid(content, free);
    const size_t shown = free > 1 ? columnsThatFit(content) * (free - 1) : 0;
    const std::string note = "  and " + std::to_string(content.size() - shown) + " more";
    content.resize(shown);
    if (shown > 0) grid(content, free - 1);
    add({{note, Ink::faint}});
  }

  std::vector<Line> fitted() {
    if (isHeightLimited() && lines_.size() > style_.rows) lines_.resize(style_.rows);
    if (style_.columns) {
      for (Line& line : lines_) line = cut(line, style_.columns);
    }
    return std::move(lines_);
  }

  const StatisticsData& record_;
  const ReportSubject& subject_;
  const ReportStyle& style_;
  const Glyphs& glyphs_;
  std::vector<Line> lines_;
};

}  // namespace

std::vector<Line> reportLines(const StatisticsData& record, const ReportSubject& subject,
                              const ReportStyle& style) {
  return Report(record, subject, style).lines();
}

}  // namespace halvermonte
