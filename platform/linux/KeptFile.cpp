#include "platform/linux/KeptFile.hpp"

#include <sys/resource.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace halvermonte::linuxos {
namespace {

/// Descriptors from this number on are reserved for the host.
int firstReserved() {
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur > 1 << 20) return 1 << 20;
  const int count = static_cast<int>(limit.rlim_cur);
  return count - std::min(64, count / 4);
}

bool isGone(int error) { return error == ENODEV || error == ENOENT; }
bool isShortage(int error) { return error == EMFILE || error == ENFILE; }

}  // namespace

void KeptFile::reopen() {
  file_ = openFile();
  if (file_) {
    state_ = file_.number() < firstReserved() ? State::kept : State::openedPerRead;
    if (state_ == State::openedPerRead) file_.close();
  } else if (isShortage(error_)) {
    state_ = State::openedPerRead;
  } else {
    state_ = isGone(error_) ? State::gone : State::unreadable;
  }
}

std::string_view KeptFile::read(std::span<char> buffer) {
  if (state_ == State::unopened || state_ == State::unreadable) reopen();
  std::string_view text;
  if (state_ == State::kept) text = readFrom(file_, buffer);
  if (state_ == State::openedPerRead) {
    if (const Descriptor file = openFile()) text = readFrom(file, buffer);
  }
  if (isGone(error_)) {
    state_ = State::gone;
    file_.close();
  }
  return text;
}

std::string_view KeptFile::readFrom(const Descriptor& file, std::span<char> buffer) {
  ssize_t size;
  do {
    size = calls_->readAt(file.number(), buffer.data(), buffer.size(), 0);
  } while (size < 0 && errno == EINTR);
  error_ = size < 0 ? errno : 0;
  return {buffer.data(), static_cast<size_t>(std::max<ssize_t>(size, 0))};
}

Descriptor KeptFile::openFile() {
  Descriptor file(*calls_, calls_->open(path_.c_str()));
  error_ = file ? 0 : errno;
  return file;
}

}  // namespace halvermonte::linuxos
