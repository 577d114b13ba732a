// Preloaded into the built monitor: makes the sensors of some devices as slow as bad drivers are.
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <thread>

namespace {

/// The path of an open file.
std::string pathOf(int descriptor) {
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  std::array<char, 4096> path;
  const ssize_t size = readlink(link.c_str(), path.data(), path.size());
  return {path.data(), size < 0 ? 0 : static_cast<size_t>(size)};
}

bool isReadingOf(std::string_view path, std::string_view device) {
  return path.find(device) != path.npos && path.ends_with("_input");
}

bool failsThisTime() {
  static std::atomic<unsigned> attempts = 0;
  return attempts++ % 2 == 1;
}

}  // namespace

extern "C" ssize_t pread(int descriptor, void* buffer, size_t size, off_t offset) {
  using std::chrono::seconds;
  const std::string path = pathOf(descriptor);
  if (isReadingOf(path, "/takes-two-seconds/")) std::this_thread::sleep_for(seconds(2));
  if (isReadingOf(path, "/takes-three-and-may-fail/")) {
    std::this_thread::sleep_for(seconds(3));
    if (failsThisTime()) {
      errno = ETIMEDOUT;
      return -1;
    }
  }
  while (isReadingOf(path, "/never-returns/")) pause();
  return syscall(SYS_pread64, descriptor, buffer, size, offset);
}
