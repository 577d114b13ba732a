// The system calls by which the kernel's files are read: one class, so that a test can count them,
// make them fail, or tell another time. Any thread may call.
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

  /// A descriptor that no child inherits, or -1 and errno. Never waits for a writer.
  virtual int open(const char* path);
  virtual int openFolder(const char* path);
  /// As pread.
  virtual ssize_t readAt(int descriptor, char* buffer, size_t size, off_t offset);
  /// The folder's entries from its start, as getdents64 packs them.
  virtual ssize_t list(int folder, char* buffer, size_t size);
  /// The entries after those.
  virtual ssize_t listOn(int folder, char* buffer, size_t size);
  virtual void close(int descriptor);

  /// Seconds of a clock that is never set.
  virtual double steadySeconds();

  /// The kernel's own.
  static SystemCalls& real();
};

}  // namespace halvermonte::linuxos
