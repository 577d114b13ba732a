// The parts of the live view around its list.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "monitor/PassView.hpp"
#include "monitor/live/Grid.hpp"
#include "monitor/live/History.hpp"
#include "monitor/live/Origins.hpp"
#include "monitor/live/Pen.hpp"
#include "monitor/live/Rows.hpp"
#include "monitor/live/ViewState.hpp"

namespace halvermonte {

/// Draws the machine, the age and cost of the pass and the facts about the computer from the top
/// row on. Returns how many rows that took.
size_t drawHeader(Grid& grid, const Pen& pen, const PassView& view, bool isPaused,
                  std::chrono::steady_clock::time_point now);

/// Draws the keys, the filter and the message in the last row.
void drawFooter(Grid& grid, const Pen& pen, const ViewState& state, const std::string& message);

/// What there is to say about the selected row: readings since the start, origin, and why the shown
/// number is not the machine's.
std::vector<std::string> detailLines(const Row& row, const Pen& pen, const PassView& view,
                                     const History& history, const Origins& origins);

/// The keys and marks.
std::vector<std::string> helpLines(const Pen& pen);

/// "3 s ago", "5 min ago".
std::string ageText(std::chrono::steady_clock::duration age);

/// After how much time the text of the age is worth another look. That is half a second late, so
/// that it never happens if there is a pass a second.
std::chrono::steady_clock::duration untilNextAge(std::chrono::steady_clock::duration age);

}  // namespace halvermonte
