// How the C interface reports failures: inside they are exceptions, outside a status and a text.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

#include "halvermonte/halvermonte.h"

namespace halvermonte::capi {

/// A failure that the C interface itself noticed.
class Failure : public std::runtime_error {
 public:
  Failure(halvermonte_status status, const std::string& reason)
      : std::runtime_error(reason), status_(status) {}

  halvermonte_status status() const noexcept { return status_; }

 private:
  halvermonte_status status_;
};

/// Keeps the text as the calling thread's last error.
void setLastError(std::string_view reason) noexcept;

/// Returns the status of the exception that is being handled, after it has kept its reason.
halvermonte_status statusOfException() noexcept;

/// Calls, and returns the status of what the call throws.
template <class Call>
halvermonte_status statusOf(const Call& call) noexcept {
  try {
    call();
    return HALVERMONTE_OK;
  } catch (...) {
    return statusOfException();
  }
}

/// Throws a Failure if the pointer is NULL.
void require(const void* pointer, const char* parameter);

/// Throws a Failure if the number is not below the limit.
void requireBelow(size_t limit, size_t number, const char* parameter);

}  // namespace halvermonte::capi
