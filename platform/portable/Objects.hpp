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

enum class ObjectKind : uint8_t {
  ended,  ///< released by its last owner
  text,
  number,
  array,
  dictionary,
  hidClient,
  hidService,
  hidEvent,
};

/// A reference-counted object; born with one reference. Constants are not counted and never end.
///
/// An object that has ended is kept for a while, so that a use of it after its end is recognised
/// instead of reading memory that is somebody else's.
class Object {
 public:
  enum class Life : uint8_t { counted, constant };

  explicit Object(ObjectKind kind, Life life = Life::counted);
  virtual ~Object();
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  ObjectKind kind() const { return kind_; }

  void retain() const;
  /// Ends the object with its last reference.
  void release() const;

 private:
  /// Gives up what the object holds.
  virtual void end() {}

  mutable ObjectKind kind_;
  Life life_;
  mutable std::atomic<uint32_t> references_{1};
};

/// Ends the process with a line that names the call and what it expected. On the platform, such a
/// call would read or write memory that is not its own.
[[noreturn]] void refuse(const char* call, const char* expected);

/// The object behind a reference, which must be a live one of the type.
template <class Target>
Target& objectOf(CFTypeRef reference, const char* call) {
  const auto* const object = static_cast<const Object*>(reference);
  if (object == nullptr || object->kind() != Target::kKind) refuse(call, Target::kExpected);
  return const_cast<Target&>(static_cast<const Target&>(*object));
}

}  // namespace halvermonte::portable

struct __CFString final : halvermonte::portable::Object {
  static constexpr auto kKind = halvermonte::portable::ObjectKind::text;
  static constexpr const char* kExpected = "a live text";

  explicit __CFString(std::string text, Life life = Life::counted)
      : Object(kKind, life), characters(std::move(text)) {}

  std::string characters;
};

struct __CFNumber final : halvermonte::portable::Object {
  static constexpr auto kKind = halvermonte::portable::ObjectKind::number;
  static constexpr const char* kExpected = "a live number";

  __CFNumber(CFNumberType numberType, std::variant<int64_t, double> number)
      : Object(kKind), type(numberType), value(number) {}

  CFNumberType type;  ///< that it was made with
  std::variant<int64_t, double> value;
};

/// A container that does not retain its elements lends what may have ended meanwhile.
struct __CFArray final : halvermonte::portable::Object {
  static constexpr auto kKind = halvermonte::portable::ObjectKind::array;
  static constexpr const char* kExpected = "a live array";

  explicit __CFArray(bool retained = true) : Object(kKind), retains(retained) {}
  void end() override;
  void add(CFTypeRef element);

  bool retains;
  std::vector<CFTypeRef> elements;
};

struct __CFDictionary final : halvermonte::portable::Object {
  static constexpr auto kKind = halvermonte::portable::ObjectKind::dictionary;
  static constexpr const char* kExpected = "a live dictionary";

  struct Entry {
    CFStringRef key;
    CFTypeRef value;
  };

  explicit __CFDictionary(bool keysRetained = true, bool valuesRetained = true)
      : Object(kKind), retainsKeys(keysRetained), retainsValues(valuesRetained) {}
  void end() override;
  void add(CFStringRef key, CFTypeRef value);

  bool retainsKeys;  ///< and finds an entry by its key's characters; else by the key's identity
  bool retainsValues;
  std::vector<Entry> entries;
};
