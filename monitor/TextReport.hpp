// The report that a person reads, as lines: temperatures, fans and disk traffic of one pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "monitor/Line.hpp"
#include "record/StatisticsData.hpp"

namespace halvermonte {

struct ProcessLoad {
  int32_t identifier = 0;
  float percentOfOneCore = 0;
};

/// What a report tells besides the record's sensor and disk properties.
struct ReportSubject {
  std::string title;      ///< the machine, and why it where it was not asked for
  std::string processor;  ///< "" where it is not known
  int32_t cores = 1;      ///< physical ones; 1 may stand for "not known"
  std::optional<ProcessLoad> process;
  bool ratesKnown = true;  ///< false before a second pass: a rate needs two
  std::string trouble;     ///< why the pass ended early; "" where it did not
};

struct ReportStyle {
  bool unicode = true;
  bool fahrenheit = false;
  size_t columns = 0;  ///< the report's width; 0: as wide as it needs
  size_t rows = 0;     ///< its height; 0: as high as it needs
};

/// The lines in order. Names that the short temperature list has come first, and are marked. Where
/// the height is limited the temperatures flow into columns, and those without a place are counted.
std::vector<Line> reportLines(const StatisticsData& record, const ReportSubject& subject,
                              const ReportStyle& style);

}  // namespace halvermonte
