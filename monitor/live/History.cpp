#include "monitor/live/History.hpp"

#include <algorithm>
#include <iterator>

namespace halvermonte {
namespace {

void addReadings(Quantity quantity, const std::vector<SensorView>& sensors,
                 std::map<Track, int32_t>& readings) {
  for (const SensorView& sensor : sensors) {
    if (sensor.isRead) readings[{quantity, sensor.identity}] = sensor.number;
  }
}

}  // namespace

void History::add(const PassView& view) {
  const Moment now{view.counted, view.time};
  if (last_ && isAfterGap(now)) {
    for (size_t i = 0; i < kGap; ++i) append({});
  }
  last_ = now;
  std::map<Track, int32_t> readings;
  addReadings(Quantity::temperature, view.temperatures, readings);
  addReadings(Quantity::fan, view.fans, readings);
  append(readings);
  for (const auto& [track, reading] : readings) {
    Extremes& extremes = extremes_.try_emplace(track, Extremes{reading, reading}).first->second;
    extremes.lowest = std::min(extremes.lowest, reading);
    extremes.highest = std::max(extremes.highest, reading);
    extremes.sum += reading;
    ++extremes.count;
  }
}

bool History::isAfterGap(const Moment& now) const {
  // The steady clock stands still while the computer sleeps, and the machine's may be simulated,
  // with a second a pass.
  const Duration steady = now.steady - last_->steady;
  const Duration byMachine(now.machine - last_->machine);
  return std::max(steady, byMachine) > 3 * std::max(interval_, Duration(1));
}

void History::append(const std::map<Track, int32_t>& readings) {
  for (const auto& [track, reading] : readings) lines_[track];
  for (auto it = lines_.begin(); it != lines_.end();) {
    Line& line = it->second;
    const auto found = readings.find(it->first);
    line.push_back(found == readings.end() ? std::nullopt : std::optional(found->second));
    if (line.size() > kKept) line.pop_front();
    const bool isForgotten =
        !line.front() && std::ranges::none_of(line, [](const auto& s) { return s.has_value(); });
    it = isForgotten ? lines_.erase(it) : std::next(it);
  }
}

Samples History::newest(const Track& track, size_t count) const {
  const auto found = lines_.find(track);
  if (found == lines_.end()) return {};
  const Line& line = found->second;
  const size_t shown = std::min(count, line.size());
  return {line.end() - static_cast<ptrdiff_t>(shown), line.end()};
}

const Extremes* History::extremes(const Track& track) const {
  const auto found = extremes_.find(track);
  return found == extremes_.end() ? nullptr : &found->second;
}

}  // namespace halvermonte
