// Reads a source: on the thread of the pass while it is fast, on a thread of its own while it is
// slow.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/Source.hpp"

namespace halvermonte::linuxos {

/// A source is slow if a reading took longer than this, well or ill.
inline constexpr double kSlowSeconds = 0.02;
/// Between two attempts if not every pass makes one.
inline constexpr double kRetrySeconds = 10;
/// A source that became slow is fast again after so many fast readings in a row. A busy computer
/// may hold up any thread for a moment. Each further time, twice as many are needed, up to the
/// most.
inline constexpr int kFastReadings = 6;
inline constexpr int kMostFastReadings = 360;

/// Owned by its sensor and by each thread that reads the source, so that a read that never returns
/// holds up nobody. Any thread may call.
class SourceReader : public std::enable_shared_from_this<SourceReader> {
 public:
  enum class Speed : uint8_t { unknown, fast, slow };
  struct History {
    Speed speed = Speed::unknown;
    uint64_t attempts = 0;                         ///< that have ended
    std::optional<Answer> latest = std::nullopt;   ///< of the latest attempt
    std::optional<Answer> reading = std::nullopt;  ///< of the latest attempt that did not fail
    double readingTime = 0;                        ///< when that ended
    double nextAttempt = 0;                        ///< not before this time, for a slow source
    int fastReadings = 0;                          ///< of a slow source, in a row
    int neededReadings = kFastReadings;            ///< of them, to become fast again
  };

  SourceReader(SystemCalls& calls, std::unique_ptr<Source> source)
      : calls_(calls), source_(std::move(source)) {}

  Speed speed() const;
  History history() const;
  /// Goes on as another reader of the same sensor. REQUIRES: no attempt was made yet.
  void continueFrom(History history);

  /// Reads the source on this thread. Does nothing if another one is reading it.
  void attempt();
  /// An attempt has taken too long, and may still be under way.
  void giveUp();

  /// Reads a slow source every ten seconds, on a thread that ends some time after `end`, or when
  /// the source is fast again. Does nothing if a read is under way or it is too early for one.
  void keepReading(double now, double end);
  /// Ends that thread, but does not wait for it.
  void stop();

 private:
  void run();
  void judge(double seconds);
  void becomeSlow();

  SystemCalls& calls_;
  const std::unique_ptr<Source> source_;
  mutable std::mutex mutex_;  ///< guards what follows
  std::condition_variable stopped_;
  History history_;
  double end_ = 0;
  bool isReading_ = false;
  bool hasThread_ = false;
  bool isStopped_ = false;
};

}  // namespace halvermonte::linuxos
