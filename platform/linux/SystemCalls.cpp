#include "platform/linux/SystemCalls.hpp"
#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <ctime>

namespace halvermonte::linuxos {

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

SystemCalls& SystemCalls::real() {
  static SystemCalls calls;
  return calls;
}

}  // namespace halvermonte::linuxos
