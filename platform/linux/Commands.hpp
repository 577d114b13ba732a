// Shell commands and the children they leave.
#pragma once

#include <sys/types.h>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace halvermonte::linuxos {

/// Runs commands and collects their ended shells. Any thread may call. Only children that were
/// started here are ever waited for, and the host's signal handlers are left as they are.
class Commands {
 public:
  Commands() = default;
  Commands(const Commands&) = delete;
  Commands& operator=(const Commands&) = delete;
  /// Gives shells that have closed their output a moment to end; those that then still run are
  /// left.
  ~Commands();

  /// What "/bin/sh -c COMMAND" writes to its output until every holder has closed it; absent where
  /// it could not be started. Standard input and error are the host's; no other descriptor is
  /// handed on, and no blocked or ignored signal. The shell's exit is not waited for: a later call
  /// collects it.
  std::optional<std::string> outputOf(const std::string& command);

 private:
  void collectEnded();

  std::mutex mutex_;
  std::vector<pid_t> children_;
};

}  // namespace halvermonte::linuxos
