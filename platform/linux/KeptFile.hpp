// A small file that is read many times.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/Files.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {

/// Reads a file from its start each time, through one descriptor that stays open. If the process is
/// short of descriptors it opens, reads and closes the file each time, so that the host has some
/// left.
class KeptFile {
 public:
  enum class State { unopened, kept, openedPerRead, gone, unreadable };

  /// Opens nothing before the first read.
  KeptFile(SystemCalls& calls, std::string path) : calls_(&calls), path_(std::move(path)) {}

  const std::string& path() const noexcept { return path_; }
  State state() const noexcept { return state_; }
  /// Whether the file has to be opened again before it can be read.
  bool isLost() const noexcept { return state_ == State::gone || state_ == State::unreadable; }
  /// The errno of the last open or read. 0 if it succeeded.
  int error() const noexcept { return error_; }

  /// Reads the file's text into the buffer, and cuts it at the buffer's end. "" if the read fails.
  /// A file that could not be opened is tried again. A file that is gone is not tried again until
  /// reopen(), as a new file of that name may belong to another device.
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
