// Readings as drawings: bars, and charts of what was read over time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "monitor/live/Grid.hpp"

namespace halvermonte {

/// The characters that draw.
struct Glyphs {
  const char* folded;
  const char* unfolded;
  const char* separator;
  const char* barFilled;
  const char* barHalf;
  const char* barEmpty;
  const char* barMark;        ///< where warm and hot begin
  const char* barMarkFilled;  ///< the same in the filled part
  const char* ascii;          ///< a cell of a chart with 0 to 4 parts filled; null for Braille
};

/// ASCII ones if the terminal cannot show others.
const Glyphs& glyphsFor(bool unicode);

/// The look of a temperature in degrees Celsius.
Look lookOf(int32_t degrees);

inline constexpr size_t kBarCells = 11;  ///< 10 degrees each

/// Draws 0 to 110 degrees, with marks at the warm and the hot ones.
void drawBar(Grid& grid, size_t row, size_t column, int32_t degrees, const Glyphs& glyphs);

/// What was read, oldest first; absent: nothing.
using Samples = std::vector<std::optional<float>>;

struct Scale {
  float lowest = 0, highest = 0;
};

/// The scale on which the samples fill a chart. It covers at least `span`, so that a reading that
/// hardly changes looks like one.
Scale scaleOf(const Samples& samples, float span);

/// The newest samples at two a cell, as lines of a chart from top to bottom. Each of the lines has
/// that many cells.
std::vector<std::string> chartLines(const Samples& samples, Scale scale, size_t cells, size_t lines,
                                    const Glyphs& glyphs);

}  // namespace halvermonte
