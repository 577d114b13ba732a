// The system calls that read the kernel's files and wait for them. They are virtual so that a test
// can count them, make them fail or set the clock. Any thread may call.
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>

namespace halvermonte::linuxos {

class SystemCalls {
 public:
  SystemCalls() = default;
  SystemCalls(const SystemCalls&) = delete;
  SystemCalls& operator=(const SystemCalls&) = delete;
  virtual ~SystemCalls() = default;

  /// A descriptor that no child inherits, or -1 with errno set. Never waits for a writer.
  virtual int open(const char* path);
  virtual int openFolder(const char* path);
  /// Works as pread does.
  virtual ssize_t readAt(int descriptor, char* buffer, size_t size, off_t offset);
  /// Reads the folder's entries from its start, as getdents64 does.
  virtual ssize_t list(int folder, char* buffer, size_t size);
  /// Reads the entries that follow.
  virtual ssize_t listOn(int folder, char* buffer, size_t size);
  virtual void close(int descriptor);

  /// Seconds by a clock that nobody can set.
  virtual double steadySeconds();
  /// Waits until the condition is met or the clock has reached the time. REQUIRES: the lock is
  /// held; who changes the condition holds its mutex and notifies.
  virtual void waitUntil(double seconds, std::unique_lock<std::mutex>& lock,
                         std::condition_variable& changed, const std::function<bool()>& isMet);

  /// Runs the function on a thread that nobody waits for. The thread gets no signals, as they are
  /// the host's. Returns false if the system has no more threads.
  virtual bool startThread(std::function<void()> body);

  /// The real calls. They outlive every thread.
  static SystemCalls& real();
};

}  // namespace halvermonte::linuxos
