// What was read from each sensor since the start, in bounded memory.
#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "monitor/PassView.hpp"
#include "monitor/live/Charts.hpp"

namespace halvermonte {

enum class Quantity : uint8_t { temperature, fan };

/// Which sensor.
struct Track {
  Quantity quantity;
  std::string identity;

  auto operator<=>(const Track&) const = default;
};

/// Of all readings since the start.
struct Extremes {
  int32_t lowest = 0, highest = 0;
  double sum = 0;
  uint64_t count = 0;

  double average() const { return sum / static_cast<double>(count); }
};

class History {
 public:
  using Duration = std::chrono::duration<double>;

  /// How many samples are kept for each sensor, and how many of them stand for a gap, however long
  /// that was.
  static constexpr size_t kKept = 600, kGap = 4;

  explicit History(Duration interval) : interval_(interval) {}

  /// Adds a pass. What the machine did not give is a gap, and so is a time of more than three
  /// intervals since the former pass.
  void add(const PassView& view);

  /// The newest samples, at most that many, oldest first.
  Samples newest(const Track& track, size_t count) const;
  /// Null if the sensor was never read.
  const Extremes* extremes(const Track& track) const;

 private:
  using Line = std::deque<std::optional<int32_t>>;
  struct Moment {
    std::chrono::steady_clock::time_point steady;
    double machine = 0;
  };

  bool isAfterGap(const Moment& now) const;
  /// Adds a sample of every track; absent unless there is a new one.
  void append(const std::map<Track, int32_t>& readings);

  Duration interval_;
  std::optional<Moment> last_;
  std::map<Track, Line> lines_;
  std::map<Track, Extremes> extremes_;
};

}  // namespace halvermonte
