#include "platform/linux/Commands.hpp"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>

#include "platform/linux/Files.hpp"
#include "platform/linux/SystemCalls.hpp"

namespace halvermonte::linuxos {
namespace {

/// Starts a shell with its output in the pipe, no other descriptor open, and default signals.
class ChildSetup {
 public:
  explicit ChildSetup(int output) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setsigmask(&attributes_, &none);
    posix_spawnattr_setsigdefault(&attributes_, &all);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ChildSetup(const ChildSetup&) = delete;
  ChildSetup& operator=(const ChildSetup&) = delete;
  ~ChildSetup() {
    posix_spawnattr_destroy(&attributes_);
    posix_spawn_file_actions_destroy(&actions_);
  }

  /// The shell's process. Absent if it cannot be started.
  std::optional<pid_t> start(std::string command) const {
    std::array<char, 3> shell{"sh"};
    std::array<char, 3> option{"-c"};
    const std::array<char*, 4> arguments{shell.data(), option.data(), command.data(), nullptr};
    pid_t child = 0;
    const int error =
        posix_spawn(&child, "/bin/sh", &actions_, &attributes_, arguments.data(), environ);
    return error == 0 ? std::optional(child) : std::nullopt;
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

std::string readAll(int pipe) {
  std::string text;
  std::array<char, 16384> part;
  for (;;) {
    const ssize_t count = read(pipe, part.data(), part.size());
    if (count > 0) text.append(part.data(), static_cast<size_t>(count));
    if (count == 0 || (count < 0 && errno != EINTR)) return text;
  }
}

/// Returns true if the child has ended. It is then gone: if the host ignores SIGCHLD the kernel has
/// collected it, otherwise this call does.
bool collectIfEnded(pid_t child) { return waitpid(child, nullptr, WNOHANG) != 0; }

}  // namespace

std::optional<std::string> Commands::outputOf(const std::string& command) {
  collectEnded();
  std::array<int, 2> ends;
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  const Descriptor output(SystemCalls::real(), ends[0]);
  {
    // Only the shell may hold this end while the output is read, or the reading would never end.
    const Descriptor input(SystemCalls::real(), ends[1]);
    const std::optional<pid_t> child = ChildSetup(input.number()).start(command);
    if (!child) return std::nullopt;
    const std::lock_guard lock(mutex_);
    children_.push_back(*child);
  }
  return readAll(output.number());
}

void Commands::collectEnded() {
  const std::lock_guard lock(mutex_);
  std::erase_if(children_, collectIfEnded);
}

Commands::~Commands() {
  constexpr int kMilliseconds = 100;
  for (int i = 0; i < kMilliseconds; ++i) {
    collectEnded();
    if (children_.empty()) return;
    poll(nullptr, 0, 1);
  }
}

}  // namespace halvermonte::linuxos
