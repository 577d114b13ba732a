// A small file that is read again and again.
#pragma once

#include <span>
#include <string>

#include "platform/linux/Files.hpp"

namespace halvermonte::linuxos {

/// Reads a file from its start each time, through one descriptor that is kept open. Where
/// descriptors are short it opens, reads and closes each time, so that some stay free for the host.
class KeptFile {
 public:
  enum class State { kept, openedPerRead, gone, unreadable };

  /// Opens the file.
  KeptFile(SystemCalls& calls, std::string path);

  State state() const noexcept { return state_; }
  const std::string& path() const noexcept { return path_; }
  /// Why the last open or read failed; 0 where it did not.
  int error() const noexcept { return error_; }

  /// The file's text in the buffer, cut where that ends; "" where the read fails. A file that is
  /// gone or could not be opened is not tried again before reopen().
  std::string_view read(std::span<char> buffer);
  void reopen();

 private:
  std::string_view readFrom(const Descriptor& file, std::span<char> buffer);
  Descriptor opened();

  SystemCalls* calls_;
  std::string path_;
  Descriptor file_;
  State state_ = State::unreadable;
  int error_ = 0;
};

}  // namespace halvermonte::linuxos
