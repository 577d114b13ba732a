#include "platform/linux/SystemCalls.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <memory>
#include <utility>

namespace halvermonte::linuxos {
namespace {

using Body = std::function<void()>;

void* runBody(void* body) {
  const std::unique_ptr<Body> owned(static_cast<Body*>(body));
  (*owned)();
  return nullptr;
}

/// A thread inherits the signals that its creator blocks.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

 private:
  sigset_t former_{};
};

}  // namespace

int SystemCalls::open(const char* path) {
  return ::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

int SystemCalls::openFolder(const char* path) {
  return ::open(path, O_RDONLY | O_CLOEXEC | O_DIRECTORY);
}

ssize_t SystemCalls::readAt(int descriptor, char* buffer, size_t size, off_t offset) {
  return pread(descriptor, buffer, size, offset);
}

ssize_t SystemCalls::list(int folder, char* buffer, size_t size) {
  return lseek(folder, 0, SEEK_SET) < 0 ? -1 : listOn(folder, buffer, size);
}

ssize_t SystemCalls::listOn(int folder, char* buffer, size_t size) {
  return getdents64(folder, buffer, size);
}

void SystemCalls::close(int descriptor) { ::close(descriptor); }

double SystemCalls::steadySeconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void SystemCalls::waitUntil(double seconds, std::unique_lock<std::mutex>& lock,
                            std::condition_variable& changed, const std::function<bool()>& isMet) {
  using Clock = std::chrono::steady_clock;
  const std::chrono::duration<double> sinceStart(seconds);
  const Clock::time_point end(std::chrono::duration_cast<Clock::duration>(sinceStart));
  changed.wait_until(lock, end, isMet);
}

bool SystemCalls::startThread(Body body) {
  constexpr size_t kStackSize = size_t{512} << 10;
  auto owned = std::make_unique<Body>(std::move(body));
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  pthread_attr_setstacksize(&attributes, kStackSize);
  const SignalsBlocked blocked;
  pthread_t thread;
  const bool isStarted = pthread_create(&thread, &attributes, runBody, owned.get()) == 0;
  pthread_attr_destroy(&attributes);
  if (isStarted) static_cast<void>(owned.release());
  return isStarted;
}

SystemCalls& SystemCalls::real() {
  // Never destroyed: a thread may still read while the process ends.
  static SystemCalls& calls = *new SystemCalls;
  return calls;
}

}  // namespace halvermonte::linuxos
