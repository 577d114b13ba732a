// System calls that a test can count, hold up and make fail, with a clock that it can set.
#pragma once

#include <sys/types.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::test {

/// REQUIRES: a machine that uses it is destroyed first.
class WatchedCalls : public linuxos::SystemCalls {
 public:
  /// Waits for all threads.
  ~WatchedCalls() override {
    release("");
    for (std::thread& thread : threads_) thread.join();
  }

  int open(const char* path) override {
    const std::lock_guard lock(mutex_);
    opened.emplace_back(path);
    if (fails(openFails, path)) return -1;
    return remember(SystemCalls::open(path), path);
  }
  int openFolder(const char* path) override {
    const std::lock_guard lock(mutex_);
    ++folders;
    if (fails(openFails, path)) return -1;
    return remember(SystemCalls::openFolder(path), path);
  }
  ssize_t readAt(int descriptor, char* buffer, size_t size, off_t offset) override {
    std::unique_lock lock(mutex_);
    ++reads;
    const std::string path = paths_[descriptor];
    ++readsOfPath_[path];
    if (isHeld(path)) {
      seconds += kLate;
      released_.wait(lock, [&] { return !isHeld(path); });
    }
    if (fails(readFails, path)) return -1;
    return SystemCalls::readAt(descriptor, buffer, size, offset);
  }
  ssize_t list(int folder, char* buffer, size_t size) override {
    ++lists;
    return SystemCalls::list(folder, buffer, size);
  }
  void close(int descriptor) override {
    ++closes;
    SystemCalls::close(descriptor);
  }
  double steadySeconds() override { return seconds; }
  void waitUntil(double end, std::unique_lock<std::mutex>& lock, std::condition_variable& changed,
                 const std::function<bool()>& isMet) override {
    ++waiting_;
    // The test's clock notifies nobody.
    while (!isMet() && seconds < end) changed.wait_for(lock, std::chrono::milliseconds(1));
    --waiting_;
  }
  bool startThread(std::function<void()> body) override {
    const std::lock_guard lock(mutex_);
    if (hasNoThreads) return false;
    ++running_;
    threads_.emplace_back([this, body = std::move(body)] {
      body();
      --running_;
    });
    return true;
  }

  /// From now on, reads of files whose paths end like this wait. Each is late by the clock.
  void hold(const std::string& end) {
    const std::lock_guard lock(mutex_);
    held_.push_back(end);
  }
  /// Lets them go on. "" releases all.
  void release(const std::string& end) {
    const std::lock_guard lock(mutex_);
    std::erase_if(held_, [&](const std::string& held) { return held.ends_with(end); });
    released_.notify_all();
  }

  /// Sets the counts to 0.
  void restart() {
    const std::lock_guard lock(mutex_);
    opened.clear();
    readsOfPath_.clear();
    folders = reads = lists = closes = 0;
  }
  /// How often files whose paths end like this were opened.
  size_t opens(std::string_view end) const {
    const std::lock_guard lock(mutex_);
    return static_cast<size_t>(
        std::count_if(opened.begin(), opened.end(),
                      [&](const std::string& path) { return path.ends_with(end); }));
  }
  /// How often they were read.
  size_t readsOf(std::string_view end) const {
    const std::lock_guard lock(mutex_);
    size_t count = 0;
    for (const auto& [path, number] : readsOfPath_) count += path.ends_with(end) ? number : 0;
    return count;
  }
  /// How many threads were started.
  size_t threads() const {
    const std::lock_guard lock(mutex_);
    return threads_.size();
  }

  /// How many of them have not ended.
  size_t runningThreads() const { return running_; }
  /// How many of those wait, as a slow sensor's does between two readings.
  size_t waitingThreads() const { return waiting_; }

  std::atomic<double> seconds = 1000;
  std::vector<std::string> opened;
  std::atomic<size_t> folders = 0, reads = 0, lists = 0, closes = 0;
  std::atomic<bool> hasNoThreads = false;

  /// The errno with which a call on the path fails. 0 if it does not fail. One call at a time.
  using Failure = std::function<int(std::string_view path)>;
  Failure openFails;
  Failure readFails;

 private:
  static constexpr double kLate = 0.021;

  int remember(int descriptor, const char* path) {
    if (descriptor >= 0) paths_[descriptor] = path;
    return descriptor;
  }
  bool isHeld(std::string_view path) const {
    return std::any_of(held_.begin(), held_.end(),
                       [&](const std::string& end) { return path.ends_with(end); });
  }
  static bool fails(const Failure& failure, std::string_view path) {
    const int error = failure ? failure(path) : 0;
    if (error != 0) errno = error;
    return error != 0;
  }

  mutable std::mutex mutex_;
  std::condition_variable released_;
  std::map<int, std::string> paths_;
  std::map<std::string, size_t> readsOfPath_;
  std::vector<std::string> held_;
  std::vector<std::thread> threads_;
  std::atomic<size_t> running_ = 0, waiting_ = 0;
};

/// Fails on files whose paths end like this, with the error.
inline WatchedCalls::Failure failingOn(std::string end, int error) {
  return [end = std::move(end), error](std::string_view path) {
    return path.ends_with(end) ? error : 0;
  };
}

}  // namespace halvermonte::test
