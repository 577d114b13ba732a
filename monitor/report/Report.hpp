// The report that a person reads, as lines: temperatures, fans and disk traffic of one pass.
#pragma once

#include <vector>

#include "monitor/Line.hpp"
#include "monitor/PassView.hpp"

namespace halvermonte {

struct ReportStyle {
  bool unicode = true;
  bool fahrenheit = false;
};

/// The lines in order. Temperatures of the short list come first, and are marked.
std::vector<Line> reportLines(const PassView& view, const ReportStyle& style);

}  // namespace halvermonte
