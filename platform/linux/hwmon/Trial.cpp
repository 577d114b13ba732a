#include "platform/linux/hwmon/Trial.hpp"

#include <algorithm>

namespace halvermonte::linuxos {
namespace {

constexpr double kPatienceSeconds = 0.3;

}  // namespace

Trial::~Trial() {
  const std::lock_guard lock(shared_->mutex);
  shared_->waiting.clear();
}

void Trial::add(const std::shared_ptr<SourceReader>& reader) {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->isDone()) patience_ = kPatienceSeconds;
  auto& waiting = shared_->waiting;
  const bool isKnown = shared_->current == reader ||
                       std::find(waiting.begin(), waiting.end(), reader) != waiting.end();
  if (!isKnown) waiting.push_back(reader);
}

void Trial::supervise() {
  std::unique_lock lock(shared_->mutex);
  double now = calls_.steadySeconds();
  const double end = now + patience_;
  const auto isDone = [this] { return shared_->isDone(); };
  for (;;) {
    leaveLateOne(now);
    if (isDone() || !ensureThread() || now >= end) break;
    calls_.waitUntil(std::min(end, shared_->nextLook(now)), lock, shared_->done, isDone);
    now = calls_.steadySeconds();
  }
  patience_ = std::max(0.0, end - now);
}

void Trial::leaveLateOne(double now) {
  if (!shared_->current || now < shared_->began + kSlowSeconds) return;
  shared_->current->giveUp();
  shared_->current.reset();
  shared_->hasThread = false;
}

bool Trial::ensureThread() {
  bool& hasThread = shared_->hasThread;
  if (!hasThread) {
    hasThread = calls_.startThread([&calls = calls_, shared = shared_] { run(calls, *shared); });
  }
  return hasThread;
}

void Trial::run(SystemCalls& calls, Shared& shared) {
  std::unique_lock lock(shared.mutex);
  while (!shared.waiting.empty()) {
    const std::shared_ptr<SourceReader> reader = shared.waiting.front();
    shared.waiting.pop_front();
    shared.current = reader;
    shared.began = calls.steadySeconds();
    lock.unlock();
    reader->attempt();
    lock.lock();
    if (shared.current != reader) return;  // It was late, and another thread does the rest.
    shared.current.reset();
  }
  shared.hasThread = false;
  shared.done.notify_all();
}

}  // namespace halvermonte::linuxos
