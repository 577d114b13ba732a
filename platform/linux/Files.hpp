// Reads the kernel's files and folders, up to a bound.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Visits the folder entries in a buffer that SystemCalls::list() or listOn() has filled.
void forEachEntry(std::span<const char> packed,
                  const std::function<void(uint64_t inode, std::string_view name)>& visit);

/// Owns a descriptor.
class Descriptor {
 public:
  Descriptor() noexcept = default;
  Descriptor(SystemCalls& calls, int number) noexcept : calls_(&calls), number_(number) {}
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor() { close(); }

  explicit operator bool() const noexcept { return number_ >= 0; }
  int number() const noexcept { return number_; }
  void close() noexcept;

 private:
  SystemCalls* calls_ = nullptr;
  int number_ = -1;
};

/// An attribute fits one page. A longer text is cut there.
inline constexpr size_t kAttributeBound = 4096;
/// For tables of many processors or devices.
inline constexpr size_t kTableBound = size_t{4} << 20;

/// The file's text up to the bound. Absent if it cannot be opened or read; errno says why.
std::optional<std::string> textOf(SystemCalls& calls, const std::string& path,
                                  size_t bound = kAttributeBound);

/// The file's text, trimmed. "" if it cannot be read.
std::string trimmedTextOf(SystemCalls& calls, const std::string& path);

/// The names in a folder, sorted, without "." and "..". Absent if it cannot be opened or read.
std::optional<std::vector<std::string>> namesIn(SystemCalls& calls, const std::string& path);

/// The same, but an empty list if the folder cannot be opened or read.
std::vector<std::string> namesOrNone(SystemCalls& calls, const std::string& path);

/// The path with all links resolved. Absent if a part of it does not exist.
std::optional<std::string> realPath(const std::string& path);

}  // namespace halvermonte::linuxos
