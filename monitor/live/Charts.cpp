#include "monitor/live/Charts.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "monitor/ReadingTexts.hpp"

namespace halvermonte {
namespace {

constexpr Glyphs kUnicode{.folded = "▸",
                          .unfolded = "▾",
                          .separator = "─",
                          .barFilled = "━",
                          .barHalf = "╸",
                          .barEmpty = "─",
                          .barMark = "┼",
                          .barMarkFilled = "┿",
                          .ascii = nullptr};
constexpr Glyphs kAscii{.folded = "+",
                        .unfolded = "-",
                        .separator = "-",
                        .barFilled = "=",
                        .barHalf = "-",
                        .barEmpty = "-",
                        .barMark = "|",
                        .barMarkFilled = "#",
                        .ascii = " .:|#"};

constexpr int kParts = 4;  // of a cell's height

/// How much of a chart's height the sample fills, in parts of a cell; something if there is one.
int partsOf(const std::optional<float>& sample, Scale scale, size_t lines) {
  if (!sample) return 0;
  const float span = scale.highest - scale.lowest;
  const auto most = static_cast<float>(kParts * lines);
  const float share = span > 0 ? (*sample - scale.lowest) / span : 0;
  return static_cast<int>(std::clamp(std::ceil(share * most), 1.0F, most));
}

/// The character of Braille whose columns are filled from below.
std::string braille(int left, int right) {
  constexpr std::array<unsigned, kParts + 1> kLeft = {0x00, 0x40, 0x44, 0x46, 0x47};
  constexpr std::array<unsigned, kParts + 1> kRight = {0x00, 0x80, 0xA0, 0xB0, 0xB8};
  const unsigned dots = kLeft[static_cast<size_t>(left)] | kRight[static_cast<size_t>(right)];
  if (dots == 0) return " ";
  return {'\xE2', static_cast<char>(0xA0 | dots >> 6), static_cast<char>(0x80 | (dots & 0x3F))};
}

std::string chartCell(int left, int right, const Glyphs& glyphs) {
  if (glyphs.ascii == nullptr) return braille(left, right);
  return {glyphs.ascii[std::max(left, right)]};
}

/// What of a column of that height lies in the line, counted from below.
int partsInLine(int parts, size_t line) {
  return std::clamp(parts - kParts * static_cast<int>(line), 0, kParts);
}

}  // namespace

const Glyphs& glyphsFor(bool unicode) { return unicode ? kUnicode : kAscii; }

Look lookOf(int32_t degrees) {
  if (degrees >= kHotDegrees) return Look::hot;
  return degrees >= kWarmDegrees ? Look::warm : Look::chart;
}

void drawBar(Grid& grid, size_t row, size_t column, int32_t degrees, const Glyphs& glyphs) {
  constexpr int32_t kMost = 10 * static_cast<int32_t>(kBarCells);
  const auto halves = static_cast<size_t>((std::clamp(degrees, 0, kMost) + 2) / 5);
  for (size_t i = 0; i < kBarCells; ++i) {
    const bool isMark = i == kWarmDegrees / 10 || i == kHotDegrees / 10;
    const bool isFilled = halves >= 2 * i + 2;
    const bool isHalf = halves == 2 * i + 1;
    const char* glyph = isFilled ? (isMark ? glyphs.barMarkFilled : glyphs.barFilled)
                        : isMark ? glyphs.barMark
                                 : (isHalf ? glyphs.barHalf : glyphs.barEmpty);
    grid.put(row, column + i, glyph, isFilled || isHalf ? lookOf(degrees) : Look::faint);
  }
}

Scale scaleOf(const Samples& samples, float span) {
  std::optional<Scale> scale;
  for (const std::optional<float>& sample : samples) {
    if (!sample) continue;
    if (!scale) scale = {*sample, *sample};
    scale->lowest = std::min(scale->lowest, *sample);
    scale->highest = std::max(scale->highest, *sample);
  }
  if (!scale) return {0, span};
  const float missing = std::max(span - (scale->highest - scale->lowest), 0.0F);
  return {scale->lowest - missing / 2, scale->highest + missing / 2};
}

std::vector<std::string> chartLines(const Samples& samples, Scale scale, size_t cells, size_t lines,
                                    const Glyphs& glyphs) {
  std::vector<int> parts(2 * cells, 0);
  const size_t shown = std::min(parts.size(), samples.size());
  std::transform(samples.end() - static_cast<ptrdiff_t>(shown), samples.end(),
                 parts.end() - static_cast<ptrdiff_t>(shown),
                 [&](const auto& sample) { return partsOf(sample, scale, lines); });
  std::vector<std::string> drawn(lines);
  for (size_t line = 0; line < lines; ++line) {
    for (size_t i = 0; i < parts.size(); i += 2) {
      const size_t fromBelow = lines - 1 - line;
      drawn[line] +=
          chartCell(partsInLine(parts[i], fromBelow), partsInLine(parts[i + 1], fromBelow), glyphs);
    }
  }
  return drawn;
}

}  // namespace halvermonte
