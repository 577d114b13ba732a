#include "monitor/live/Sampler.hpp"

#include <unistd.h>

#include <cstdint>
#include <string>
#include <utility>

#include "monitor/Failure.hpp"
#include "monitor/PassView.hpp"
#include "monitor/Signals.hpp"
#include "monitor/live/Origins.hpp"

namespace halvermonte {

Sampler::Sampler(const Options& options, HeldMessages& messages, Choose choose)
    : options_(options), messages_(messages), choose_(std::move(choose)) {
  const auto [readEnd, writeEnd] = openPipe();
  readEnd_ = readEnd;
  writeEnd_ = writeEnd;
  const Signals::Blocked blocked;  // they are for the thread with the terminal
  thread_ = std::thread([this] { run(); });
}

Sampler::~Sampler() {
  stop(std::chrono::milliseconds(0));
  thread_.join();
  close(readEnd_);
  close(writeEnd_);
}

std::shared_ptr<const Snapshot> Sampler::take() {
  char announced[64];
  while (read(readEnd_, announced, sizeof announced) > 0) continue;
  const std::lock_guard lock(mutex_);
  return std::exchange(newest_, nullptr);
}

bool Sampler::hasEnded() {
  const std::lock_guard lock(mutex_);
  if (failure_) std::rethrow_exception(failure_);
  return hasEnded_;
}

void Sampler::setPaused(bool isPaused) {
  const std::lock_guard lock(mutex_);
  isPaused_ = isPaused;
  changed_.notify_all();
}

bool Sampler::stop(std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  isStopped_ = true;
  changed_.notify_all();
  return changed_.wait_for(lock, patience, [this] { return hasEnded_; });
}

void Sampler::run() {
  std::exception_ptr failure;
  try {
    makePasses();
  } catch (...) {
    failure = std::current_exception();
  }
  const std::lock_guard lock(mutex_);
  failure_ = failure;
  hasEnded_ = true;
  changed_.notify_all();
  announce();
}

void Sampler::makePasses() {
  const Choice choice = choose_(options_);
  Sampling& sampling = *choice.sampling;
  if (options_.process) sampling.watchProcess(*options_.process);
  sampling.collectComplaints(messages_);
  std::shared_ptr<const Origins> origins;
  // The first pass has no rates, and does not count.
  for (uint64_t made = 0;; ++made) {
    const PassView& view = sampling.pass();
    if (!origins) {
      origins =
          std::make_shared<const Origins>(findOrigins(sampling.engine(), sampling.machine(), view));
    }
    auto snapshot = std::make_shared<Snapshot>(Snapshot{view, origins, choice.hint});
    snapshot->view.record.reset();
    publish(std::move(snapshot));
    if (!wait(view.counted) || made == options_.ticks) return;
  }
}

bool Sampler::wait(Beat::Clock::time_point counted) {
  const auto interval = intervalOf(options_);
  std::unique_lock lock(mutex_);
  while (!isStopped_) {
    changed_.wait(lock, [this] { return !isPaused_ || isStopped_; });
    Beat beat(interval, counted, Beat::Clock::now());
    bool isDue = false;
    while (!isDue && !isPaused_ && !isStopped_) {
      changed_.wait_until(lock, beat.due());
      const auto now = Beat::Clock::now();
      isDue = now >= beat.due() && beat.isOn(now);
    }
    if (isDue && !isStopped_) return true;
  }
  return false;
}

void Sampler::publish(std::shared_ptr<const Snapshot> snapshot) {
  const std::lock_guard lock(mutex_);
  newest_ = std::move(snapshot);
  announce();
}

void Sampler::announce() const {
  // A pipe that is full announces enough.
  [[maybe_unused]] const ssize_t written = write(writeEnd_, "n", 1);
}

}  // namespace halvermonte
