#include "capi/Errors.hpp"

#include <exception>
#include <new>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/MachineFileError.hpp"

namespace halvermonte::capi {
namespace {

struct LastError {
  std::string storage;
  const char* text = "";
};

thread_local LastError lastError;

halvermonte_status failed(halvermonte_status status, std::string_view reason) noexcept {
  setLastError(reason);
  return status;
}

}  // namespace

void setLastError(std::string_view reason) noexcept {
  try {
    lastError.storage = reason;
    lastError.text = lastError.storage.c_str();
  } catch (const std::bad_alloc&) {
    lastError.text = "out of memory";
  }
}

halvermonte_status statusOfException() noexcept {
  try {
    throw;
  } catch (const Failure& failure) {
    return failed(failure.status(), failure.what());
  } catch (const MachineFileError& error) {
    return failed(HALVERMONTE_BAD_MACHINE_FILE, error.what());
  } catch (const PlatformException& exception) {
    return failed(HALVERMONTE_PASS_ENDED, exception.reason());
  } catch (const std::bad_alloc&) {
    return failed(HALVERMONTE_OUT_OF_MEMORY, "out of memory");
  } catch (const std::exception& exception) {
    return failed(HALVERMONTE_FAILED, exception.what());
  } catch (...) {
    return failed(HALVERMONTE_FAILED, "an exception of an unknown type");
  }
}

void require(const void* pointer, const char* parameter) {
  if (pointer != nullptr) return;
  throw Failure(HALVERMONTE_NULL_ARGUMENT,
                std::string(parameter) + ": expected a pointer, not NULL");
}

void requireBelow(size_t limit, size_t number, const char* parameter) {
  if (number < limit) return;
  throw Failure(HALVERMONTE_OUT_OF_RANGE,
                std::string(parameter) + ": expected a number below " + std::to_string(limit));
}

}  // namespace halvermonte::capi

const char* halvermonte_last_error(void) { return halvermonte::capi::lastError.text; }
