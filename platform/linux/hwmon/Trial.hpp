// Readings that may take long: a source's first one, and each command to a device.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

#include "platform/linux/SystemCalls.hpp"
#include "platform/linux/hwmon/SourceReader.hpp"

namespace halvermonte::linuxos {

/// Reads sources once, in order, on a thread that ends with the last one. A source that is slow
/// keeps the thread, and the others go on in a new one. One thread supervises.
class Trial {
 public:
  explicit Trial(SystemCalls& calls) : calls_(calls) {}
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  /// Does not wait.
  ~Trial();

  /// Does nothing if the source is on trial already. The first one of a trial allows the supervisor
  /// to wait for 0.3 seconds in all.
  void add(const std::shared_ptr<SourceReader>& reader);

  /// Waits for the sources on trial, but not longer than it takes to see that one is slow, and not
  /// longer in all than it may.
  void supervise();

 private:
  /// Shared with the threads.
  struct Shared {
    std::mutex mutex;
    std::condition_variable done;
    std::deque<std::shared_ptr<SourceReader>> waiting;
    std::shared_ptr<SourceReader> current;
    double began = 0;  ///< the attempt at the current one
    bool hasThread = false;

    bool isDone() const { return waiting.empty() && !current; }
    /// If the thread has begun with one, when that one is late; else, when to look again.
    double nextLook(double now) const { return (current ? began : now) + kSlowSeconds; }
  };
  static void run(SystemCalls& calls, Shared& shared);
  void leaveLateOne(double now);
  bool ensureThread();

  SystemCalls& calls_;
  double patience_ = 0;
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

}  // namespace halvermonte::linuxos
