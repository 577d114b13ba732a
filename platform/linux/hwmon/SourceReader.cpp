#include "platform/linux/hwmon/SourceReader.hpp"

#include <algorithm>
#include <utility>

namespace halvermonte::linuxos {

SourceReader::Speed SourceReader::speed() const {
  const std::lock_guard lock(mutex_);
  return history_.speed;
}

SourceReader::History SourceReader::history() const {
  const std::lock_guard lock(mutex_);
  return history_;
}

void SourceReader::continueFrom(History history) {
  const std::lock_guard lock(mutex_);
  history_ = std::move(history);
}

void SourceReader::attempt() {
  const double began = calls_.steadySeconds();
  {
    const std::lock_guard lock(mutex_);
    if (isReading_) return;
    isReading_ = true;
    history_.nextAttempt = began + kRetrySeconds;
  }
  Answer answer = source_->read();
  const double ended = calls_.steadySeconds();

  const std::lock_guard lock(mutex_);
  isReading_ = false;
  judge(ended - began);
  ++history_.attempts;
  history_.nextAttempt = ended + kRetrySeconds;
  if (answer.error == 0) {
    history_.reading = answer;
    history_.readingTime = ended;
  }
  history_.latest = std::move(answer);
}

void SourceReader::giveUp() {
  const std::lock_guard lock(mutex_);
  becomeSlow();
}

void SourceReader::judge(double seconds) {
  if (seconds > kSlowSeconds) {
    becomeSlow();
  } else if (history_.speed != Speed::slow) {
    history_.speed = Speed::fast;
  } else if (++history_.fastReadings == history_.neededReadings) {
    history_.speed = Speed::fast;
    history_.neededReadings = std::min(2 * history_.neededReadings, kMostFastReadings);
  }
}

void SourceReader::becomeSlow() {
  history_.speed = Speed::slow;
  history_.fastReadings = 0;
}

void SourceReader::keepReading(double now, double end) {
  const std::lock_guard lock(mutex_);
  end_ = end;
  if (hasThread_ || isReading_ || now < history_.nextAttempt) return;
  hasThread_ = calls_.startThread([self = shared_from_this()] { self->run(); });
  if (!hasThread_) history_.nextAttempt = now + kRetrySeconds;
}

void SourceReader::stop() {
  const std::lock_guard lock(mutex_);
  isStopped_ = true;
  stopped_.notify_all();
}

void SourceReader::run() {
  const auto isStopped = [this] { return isStopped_; };
  std::unique_lock lock(mutex_);
  do {
    lock.unlock();
    attempt();
    lock.lock();
    if (history_.speed == Speed::fast) break;
    calls_.waitUntil(history_.nextAttempt, lock, stopped_, isStopped);
  } while (!isStopped_ && calls_.steadySeconds() < end_);
  hasThread_ = false;
}

}  // namespace halvermonte::linuxos
