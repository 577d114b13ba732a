// The rows of the list: sections that fold, with their sensors.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "monitor/PassView.hpp"
#include "monitor/live/History.hpp"
#include "monitor/live/Origins.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {

struct Row {
  enum class Kind : uint8_t { heading, temperature, fan, traffic, chart };

  Kind kind = Kind::heading;
  Section section = Section::firstGroup;
  const SensorView* sensor = nullptr;    ///< of a heading, the hottest; or null
  const DiskTraffic* traffic = nullptr;  ///< of a chart, too
  std::string_view name = "";            ///< of a heading or a direction
  size_t count = 0;                      ///< of a heading: its sensors
  bool isFolded = false;                 ///< of a heading
  bool hasChartBelow = false;            ///< of a direction
  size_t line = 0;                       ///< of a chart, from its top

  bool isSelectable() const { return kind != Kind::chart; }
  RowId id() const;
  /// Where the sensor's history is.
  Track track() const;
};

/// The room for rows.
struct Room {
  size_t rows = 0;          ///< for all sections, or for temperatures alone if the rest has its own
  bool hasColumns = false;  ///< fans and disks have a column of their own, with charts of lines
};

/// How many lines a chart of the disks has there.
inline constexpr size_t kTallChart = 4;

/// The rows of the pass in order. Those that point into the view live as long as it does. Sections
/// unfold as far as there is room, unless a person has folded or unfolded them, and altogether
/// while there is a filter.
std::vector<Row> makeRows(const PassView& view, const Origins& origins, const ViewState& state,
                          const Room& room);

}  // namespace halvermonte
