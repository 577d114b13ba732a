#include "platform/mac/KernelVariables.hpp"

#include <sys/types.h>

#include <sys/sysctl.h>

#include <array>
#include <cstddef>
#include <cstring>

namespace halvermonte::macos {

std::optional<int64_t> integerVariable(const std::string& name) {
  int64_t value = 0;
  size_t size = sizeof value;
  if (sysctlbyname(name.c_str(), &value, &size, nullptr, 0) != 0) return std::nullopt;
  if (size == sizeof value) return value;
  if (size != sizeof(int32_t)) return std::nullopt;
  int32_t narrow = 0;
  std::memcpy(&narrow, &value, sizeof narrow);
  return narrow;
}

std::optional<std::string> textVariable(const std::string& name) {
  std::array<char, 256> text{};
  size_t size = text.size() - 1;
  if (sysctlbyname(name.c_str(), text.data(), &size, nullptr, 0) != 0) return std::nullopt;
  return std::string(text.data());
}

}  // namespace halvermonte::macos
