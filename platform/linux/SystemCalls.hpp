// The system calls that read the kernel's files. They are virtual so that a test can count them,
// make them fail or set the clock. Any thread may call.
#pragma once

#include <sys/types.h>

#include <cstddef>

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

  /// The real calls.
  static SystemCalls& real();
};

}  // namespace halvermonte::linuxos
