// A small file that is read again and again.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/Files.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Reads a file from its start each time, through one descriptor that is kept open. Where
/// descriptors are short it opens, reads and closes each time, so that some stay free for the host.
class KeptFile {
 public:
  enum class State { unopened, kept, openedPerRead, gone, unreadable };

  /// Opens nothing before the first read.
  KeptFile(SystemCalls& calls, std::string path) : calls_(&calls), path_(std::move(path)) {}

  const std::string& path() const noexcept { return path_; }
  State state() const noexcept { return state_; }
  /// Whether a read would have to find the file again.
  bool isLost() const noexcept { return state_ == State::gone || state_ == State::unreadable; }
  /// Why the last open or read failed; 0 where it did not.
  int error() const noexcept { return error_; }

  /// The file's text in the buffer, cut where that ends; "" where the read fails. A file that could
  /// not be opened is tried again; one that is gone is not: another of its name would be another's.
  std::string_view read(std::span<char> buffer);
  void reopen();

 private:
  std::string_view readFrom(const Descriptor& file, std::span<char> buffer);
  Descriptor openFile();

  SystemCalls* calls_;
  std::string path_;
  Descriptor file_;
  State state_ = State::unopened;
  int error_ = 0;
};

}  // namespace halvermonte::linuxos
