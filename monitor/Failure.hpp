// How the monitor ends when it cannot do what it was asked.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace halvermonte {

enum class ExitStatus : uint8_t { success = 0, failure = 1, wrongUse = 2 };

/// One line for standard error, and the exit status.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& line, ExitStatus status = ExitStatus::failure)
      : std::runtime_error(line), status_(status) {}
  ExitStatus status() const noexcept { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace halvermonte
