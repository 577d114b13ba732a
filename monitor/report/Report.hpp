// The report that a person reads, as lines: temperatures, fans and disk traffic of one pass.
#pragma once

#include <cstddef>
#include <vector>

#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"

namespace halvermonte {

struct ReportStyle {
  bool unicode = true;
  bool fahrenheit = false;
  size_t columns = 0;  ///< the report's width; 0: as wide as it needs
  size_t rows = 0;     ///< its height; 0: as high as it needs
};

/// The lines in order. Temperatures of the short list come first, and are marked. If the height is
/// limited, the temperatures flow into columns, and the last line counts those that do not fit.
std::vector<Line> reportLines(const PassView& view, const ReportStyle& style);

}  // namespace halvermonte
