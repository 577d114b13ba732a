#include "platform/linux/Files.hpp"

#include <dirent.h>
#include <sys/types.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

std::optional<std::string> wholeText(SystemCalls& calls, const std::string& path, size_t bound) {
  const Descriptor file(calls, calls.open(path.c_str()));
  if (!file) return std::nullopt;
  std::string text;
  std::array<char, 4096> part;
  while (text.size() < bound) {
    const ssize_t count =
        calls.readAt(file.number(), part.data(), part.size(), static_cast<off_t>(text.size()));
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    text.append(part.data(), static_cast<size_t>(count));
  }
  text.resize(std::min(text.size(), bound));
  return text;
}

std::optional<std::vector<std::string>> allNames(SystemCalls& calls, const std::string& path) {
  const Descriptor folder(calls, calls.openFolder(path.c_str()));
  if (!folder) return std::nullopt;
  std::vector<std::string> names;
  std::array<char, 8192> packed;
  ssize_t size;
  while ((size = calls.listOn(folder.number(), packed.data(), packed.size())) > 0) {
    const std::span entries(packed.data(), static_cast<size_t>(size));
    forEachEntry(entries, [&](uint64_t /*inode*/, std::string_view name) {
      if (name != "." && name != "..") names.emplace_back(name);
    });
  }
  return size == 0 ? std::optional(std::move(names)) : std::nullopt;
}

/// Tries again after an error that may pass: what is read here is kept for a long time.
template <class Attempt>
auto tryTwice(Attempt attempt) {
  auto result = attempt();
  if (result) return result;
  const bool isLasting = errno == ENOENT || errno == ENOTDIR || errno == EACCES;
  return isLasting ? result : attempt();
}

}  // namespace

void forEachEntry(std::span<const char> packed,
                  const std::function<void(uint64_t inode, std::string_view name)>& visit) {
  for (size_t place = 0; place < packed.size();) {
    const char* const entry = packed.data() + place;
    dirent64 head;
    std::memcpy(&head, entry, offsetof(dirent64, d_name));
    visit(head.d_ino, entry + offsetof(dirent64, d_name));
    place += head.d_reclen;
  }
}

Descriptor::Descriptor(Descriptor&& other) noexcept
    : calls_(other.calls_), number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(calls_, other.calls_);
  std::swap(number_, other.number_);
  return *this;
}

void Descriptor::close() noexcept {
  if (number_ >= 0) calls_->close(std::exchange(number_, -1));
}

std::optional<std::string> textOf(SystemCalls& calls, const std::string& path, size_t bound) {
  return tryTwice([&] { return wholeText(calls, path, bound); });
}

std::string trimmedTextOf(SystemCalls& calls, const std::string& path) {
  return std::string(trimmed(textOf(calls, path).value_or("")));
}

std::optional<std::vector<std::string>> namesIn(SystemCalls& calls, const std::string& path) {
  auto names = tryTwice([&] { return allNames(calls, path); });
  if (names) std::sort(names->begin(), names->end());
  return names;
}

std::vector<std::string> namesOrNone(SystemCalls& calls, const std::string& path) {
  return namesIn(calls, path).value_or(std::vector<std::string>());
}

std::optional<std::string> realPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                             &std::free);
  if (!resolved) return std::nullopt;
  return resolved.get();
}

}  // namespace halvermonte::linuxos
