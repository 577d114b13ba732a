// Owns one reference to a platform object, from the create or copy call that gave it.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include "platform/AnsweredBy.hpp"

namespace halvermonte {
inline namespace HALVERMONTE_PLATFORM {

template <class Reference>
class CFOwned {
 public:
  explicit CFOwned(Reference object) noexcept : object_(object) {}
  ~CFOwned() {
    if (object_ != nullptr) CFRelease(object_);
  }
  CFOwned(const CFOwned&) = delete;
  CFOwned& operator=(const CFOwned&) = delete;

  Reference get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  Reference object_;
};

}  // namespace HALVERMONTE_PLATFORM
}  // namespace halvermonte
