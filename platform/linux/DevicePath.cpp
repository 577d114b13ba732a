#include "platform/linux/DevicePath.hpp"

#include <algorithm>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {

std::optional<std::string> devicePath(const std::string& sys, const std::string& path) {
  std::optional<std::string> real = realPath(path);
  const std::optional<std::string> root = realPath(sys);
  if (!real || !root) return std::nullopt;
  for (const std::string& start : {*root + "/devices/", *root + "/"}) {
    if (real->starts_with(start)) return real->substr(start.size());
  }
  return real;
}

bool standsBeforeInHardware(std::string_view first, std::string_view second) {
  const std::vector<std::string_view> left = split(first, '/');
  const std::vector<std::string_view> right = split(second, '/');
  return std::lexicographical_compare(
      left.begin(), left.end(), right.begin(), right.end(),
      [](std::string_view one, std::string_view other) {
        return one.size() != other.size() ? one.size() < other.size() : one < other;
      });
}

}  // namespace halvermonte::linuxos
