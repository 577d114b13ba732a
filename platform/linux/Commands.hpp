// Runs shell commands.
#pragma once

#include <sys/types.h>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace halvermonte::linuxos {

/// Runs commands, and waits for their shells so that no zombies are left. Any thread may call. It
/// waits only for its own children, and does not change the host's signal handlers.
class Commands {
 public:
  Commands() = default;
  Commands(const Commands&) = delete;
  Commands& operator=(const Commands&) = delete;
  /// Waits a moment for shells that have closed their output. Shells that still run are left alone.
  ~Commands();

  /// What "/bin/sh -c COMMAND" writes to its standard output, read until every process that holds
  /// it has closed it. Absent if the shell cannot be started. The shell shares the host's standard
  /// input and error, and inherits no other descriptor and no blocked or ignored signal. The call
  /// does not wait for the shell to exit: a later call does.
  std::optional<std::string> outputOf(const std::string& command);

 private:
  void collectEnded();

  std::mutex mutex_;
  std::vector<pid_t> children_;
};

}  // namespace halvermonte::linuxos
