// The objects behind the portable CoreFoundation and HID references.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace halvermonte::portable {

/// A reference-counted object; born with one reference. Constants are not counted and never end.
class Object {
 public:
  enum class Life { counted, constant };

  explicit Object(Life life = Life::counted);
  virtual ~Object();
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  void retain() const;
  void release() const;

 private:
  Life life_;
  mutable std::atomic<uint32_t> references_{1};
};

/// One retained reference inside a container.
class Retained {
 public:
  explicit Retained(CFTypeRef object) : object_(CFRetain(object)) {}
  Retained(Retained&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Retained& operator=(Retained&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Retained() {
    if (object_ != nullptr) CFRelease(object_);
  }
  CFTypeRef get() const { return object_; }

 private:
  CFTypeRef object_;
};

}  // namespace halvermonte::portable

struct __CFString final : halvermonte::portable::Object {
  explicit __CFString(std::string text, Life life = Life::counted)
      : Object(life), characters(std::move(text)) {}
  std::string characters;
};

struct __CFNumber final : halvermonte::portable::Object {
  explicit __CFNumber(std::variant<int64_t, double> number) : value(number) {}
  std::variant<int64_t, double> value;
};

struct __CFArray final : halvermonte::portable::Object {
  std::vector<halvermonte::portable::Retained> elements;
};

struct __CFDictionary final : halvermonte::portable::Object {
  struct Entry {
    halvermonte::portable::Retained key;
    halvermonte::portable::Retained value;
  };
  std::vector<Entry> entries;
};
