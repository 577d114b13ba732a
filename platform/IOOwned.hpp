// Owns one object of IOKit (a service, an iterator), from the call that gave it.
#pragma once

#include <IOKit/IOKitLib.h>

#include <utility>

#include "platform/AnsweredBy.hpp"

namespace halvermonte {
inline namespace HALVERMONTE_PLATFORM {

class IOOwned {
 public:
  explicit IOOwned(io_object_t object) noexcept : object_(object) {}
  ~IOOwned() {
    if (object_ != 0) IOObjectRelease(object_);
  }
  IOOwned(IOOwned&& other) noexcept : object_(std::exchange(other.object_, 0)) {}
  IOOwned(const IOOwned&) = delete;
  IOOwned& operator=(const IOOwned&) = delete;

  io_object_t get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != 0; }

 private:
  io_object_t object_;
};

}  // namespace HALVERMONTE_PLATFORM
}  // namespace halvermonte
