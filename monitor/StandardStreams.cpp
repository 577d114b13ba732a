#include "monitor/StandardStreams.hpp"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <utility>

#include "monitor/Failure.hpp"

namespace halvermonte {

namespace {

// The next file to be opened would get the number of a closed stream, and complaints with it.
void closeOffMissingStreams() {
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDWR);  // takes the lowest free number
  }
}

}  // namespace

bool writeWhole(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<size_t>(written));
    } else if (errno == EAGAIN) {
      pollfd ready{descriptor, POLLOUT, 0};
      poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

// Not in one call, as macOS has none for it. Nothing starts a program in between.
std::array<int, 2> openPipe() {
  std::array<int, 2> ends;
  if (pipe(ends.data()) != 0) throw Failure(std::string("pipe: ") + std::strerror(errno));
  for (const int end : ends) {
    fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(end, F_SETFL, O_NONBLOCK);
  }
  return ends;
}

Output::Output() : descriptor_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) close(STDOUT_FILENO);
  closeOffMissingStreams();
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
}

Output::~Output() { close(descriptor_); }

void Output::write(std::string_view text) const {
  if (writeWhole(descriptor_, text)) return;
  if (errno == EPIPE) throw ReaderGone();
  throw Failure(std::string("standard output: ") + std::strerror(errno));
}

bool Output::isTerminal() const { return isatty(descriptor_) == 1; }

HeldMessages::HeldMessages(Streams streams) : streams_(static_cast<int>(streams)) {
  // If a pass prints more than a pipe holds, lines are lost, but nothing hangs.
  const auto [readEnd, writeEnd] = openPipe();
  readEnd_ = readEnd;
  std::fflush(stdout);
  for (int i = 0; i < streams_; ++i) {
    former_[static_cast<size_t>(i)] = fcntl(STDOUT_FILENO + i, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(writeEnd, STDOUT_FILENO + i);
  }
  close(writeEnd);
}

HeldMessages::~HeldMessages() {
  std::fflush(stdout);
  for (int i = 0; i < streams_; ++i) {
    const int former = former_[static_cast<size_t>(i)];
    dup2(former, STDOUT_FILENO + i);
    close(former);
  }
  close(readEnd_);
}

std::string HeldMessages::takeAll() {
  std::fflush(stdout);
  std::string printed;
  char piece[4096];
  ssize_t size = read(readEnd_, piece, sizeof piece);
  while (size > 0) {
    printed.append(piece, static_cast<size_t>(size));
    size = read(readEnd_, piece, sizeof piece);
  }
  return printed;
}

std::vector<std::string> HeldMessages::takeNew() {
  std::istringstream printed(takeAll());
  std::vector<std::string> lines;
  std::set<std::string> seen;
  for (std::string line; std::getline(printed, line);) {
    if (seen.insert(line).second && !last_.contains(line)) lines.push_back(line);
  }
  last_ = std::move(seen);
  return lines;
}

}  // namespace halvermonte
