// System calls that a test can count and make fail, with a clock that it can set.
#pragma once

#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::test {

class WatchedCalls : public linuxos::SystemCalls {
 public:
  int open(const char* path) override {
    opened.emplace_back(path);
    if (fails(openFails, path)) return -1;
    return remember(SystemCalls::open(path), path);
  }
  int openFolder(const char* path) override {
    ++folders;
    if (fails(openFails, path)) return -1;
    return remember(SystemCalls::openFolder(path), path);
  }
  ssize_t readAt(int descriptor, char* buffer, size_t size, off_t offset) override {
    ++reads;
    const std::string& path = paths_[descriptor];
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

  /// Sets the counts to 0.
  void restart() {
    opened.clear();
    folders = reads = lists = closes = 0;
  }
  /// How often files whose paths end like this were opened.
  size_t opens(std::string_view end) const {
    return static_cast<size_t>(
        std::count_if(opened.begin(), opened.end(),
                      [&](const std::string& path) { return path.ends_with(end); }));
  }

  double seconds = 1000;
  std::vector<std::string> opened;
  size_t folders = 0, reads = 0, lists = 0, closes = 0;

  /// The errno with which a call on the path fails. 0 if it does not fail.
  using Failure = std::function<int(std::string_view path)>;
  Failure openFails;
  Failure readFails;

 private:
  int remember(int descriptor, const char* path) {
    if (descriptor >= 0) paths_[descriptor] = path;
    return descriptor;
  }
  static bool fails(const Failure& failure, std::string_view path) {
    const int error = failure ? failure(path) : 0;
    if (error != 0) errno = error;
    return error != 0;
  }

  std::map<int, std::string> paths_;
};

/// Fails on files whose paths end like this, with the error.
inline WatchedCalls::Failure failingOn(std::string end, int error) {
  return [end = std::move(end), error](std::string_view path) {
    return path.ends_with(end) ? error : 0;
  };
}

}  // namespace halvermonte::test
