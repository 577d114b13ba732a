// Kernel variables, answered by the current machine.
#include <sys/sysctl.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <optional>

#include "halvermonte/Machine.hpp"

using halvermonte::Machine;

namespace {

/// How many bytes an integer variable fills in a buffer of the size; 0 if it does not fit.
size_t integerSize(size_t bufferSize) {
  if (bufferSize == sizeof(int32_t)) return sizeof(int32_t);
  return bufferSize >= sizeof(int64_t) ? sizeof(int64_t) : 0;
}

int failed(int error) {
  errno = error;
  return -1;
}

}  // namespace

int sysctlbyname(const char* name, void* oldValue, size_t* oldSize, void* newValue, size_t) {
  if (newValue != nullptr) return failed(EPERM);
  const std::optional<int64_t> value = Machine::current().kernelVariable(name);
  if (!value) return failed(ENOENT);
  const size_t size = integerSize(*oldSize);
  if (size == 0) return failed(ENOMEM);
  std::memcpy(oldValue, &*value, size);  // the low bytes come first
  *oldSize = size;
  return 0;
}
