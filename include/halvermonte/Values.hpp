// The value objects that cross the engine's edges: Text, Number, Array, Dictionary, Date, Image.
//
// Each is a handle to an immutable object behind a shared reference: cheap to copy, possibly
// absent, and keeping its identity, so that a value read back can be recognised as the very one
// stored. Handles may be copied and dropped on any thread; one handle object is not for two threads
// at once.
//
// What refers into an object (a view, an iterator) comes from a handle with a name alone, because
// the handle that a getter returns may be the last one. So these are right:
//
//   std::cout << record->diskIO_readText();                                 // or ==, <, str()
//   for (const auto& [name, degrees] : record->sensors()) show(name, degrees.asText());
//   const Text names = record->sensors_temperature();
//   parse(names.view());                                                    // while `names` lives
//
// and record->sensors_temperature().view() does not compile.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvermonte/Export.h"
#include "halvermonte/StandardLibrary.hpp"

namespace halvermonte {

class Text;
class Number;
class Array;
class Dictionary;
class Date;
class Image;

/// Any of the six kinds, or absent. The typed handles add no state, so a container of Values holds
/// them whole.
class HALVERMONTE_EXPORT Value {
 public:
  enum class Kind : uint8_t { absent, text, number, array, dictionary, date, image };

  Value() noexcept = default;

  Kind kind() const noexcept { return object_ ? object_->kind : Kind::absent; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

  /// True if both are the same object, or both are absent. Equal contents are not enough.
  bool isSame(const Value& other) const noexcept { return object_ == other.object_; }

  /// The value as the given kind; absent if it is of another one.
  Text asText() const noexcept;
  Number asNumber() const noexcept;
  Array asArray() const noexcept;
  Dictionary asDictionary() const noexcept;
  Date asDate() const noexcept;
  Image asImage() const noexcept;

 protected:
  struct Object {
    Kind kind;
  };
  using Reference = std::shared_ptr<const Object>;

  explicit Value(Reference object) noexcept : object_(std::move(object)) {}

  template <class Content>
  const Content& content() const noexcept {
    return static_cast<const Content&>(*object_);
  }
  Reference ifKind(Kind kind) const noexcept {
    return this->kind() == kind ? object_ : Reference();
  }

  Reference object_;
};

/// UTF-8 text. It compares, bytewise, and prints as a string; an absent one as "".
class HALVERMONTE_EXPORT Text : public Value {
 public:
  Text() noexcept = default;
  explicit Text(std::string_view characters);
  /// Absent if the bytes are not well-formed UTF-8.
  static Text fromUTF8(std::string_view bytes);

  /// The characters, followed by a NUL if the text is present. The view is valid as long as any
  /// handle to this object is.
  std::string_view view() const& noexcept { return characters(); }
  std::string_view view() const&& = delete;

  /// A copy of the characters.
  std::string str() const { return std::string(characters()); }
  operator std::string() const { return str(); }

  friend bool operator==(const Text& first, const Text& second) noexcept {
    return first.characters() == second.characters();
  }
  friend bool operator==(const Text& first, std::string_view second) noexcept {
    return first.characters() == second;
  }
  friend std::strong_ordering operator<=>(const Text& first, const Text& second) noexcept {
    return first.characters() <=> second.characters();
  }
  friend std::strong_ordering operator<=>(const Text& first, std::string_view second) noexcept {
    return first.characters() <=> second;
  }

  /// The pieces between the separators: one more than there are separators. The pieces share one
  /// block of memory, which lives as long as any of them.
  std::vector<Text> split(char separator) const;

 private:
  friend class Value;
  struct Content : Object {
    std::string_view characters;
  };
  struct Whole;
  struct Pieces;
  explicit Text(Reference object) noexcept : Value(std::move(object)) {}
  std::string_view characters() const noexcept {
    return object_ ? content<Content>().characters : std::string_view();
  }
};

HALVERMONTE_EXPORT std::ostream& operator<<(std::ostream& stream, const Text& text);

/// A boxed number that remembers what it was made from.
class HALVERMONTE_EXPORT Number : public Value {
 public:
  enum class Form : uint8_t { int32, int64, uint64, float32, float64 };

  Number() noexcept = default;
  static Number ofInt32(int32_t value);
  static Number ofInt64(int64_t value);
  static Number ofUInt64(uint64_t value);
  static Number ofFloat32(float value);
  static Number ofFloat64(double value);

  /// REQUIRES: present.
  Form form() const noexcept;

  /// The value converted; 0 if the number is absent. Floats outside the target's range saturate,
  /// NaN gives 0.
  int32_t int32Value() const noexcept;
  int64_t int64Value() const noexcept;
  uint64_t uint64Value() const noexcept;
  float float32Value() const noexcept;
  double float64Value() const noexcept;

 private:
  friend class Value;
  struct Content;
  explicit Number(Reference object) noexcept : Value(std::move(object)) {}
  template <class Source>
  static Number of(Form form, Source value);
};

/// An ordered list. An absent one is empty.
class HALVERMONTE_EXPORT Array : public Value {
 public:
  Array() noexcept = default;
  explicit Array(std::vector<Value> elements);

  /// The elements. They are valid as long as any handle to this object is.
  const std::vector<Value>& elements() const& noexcept { return content(); }
  const std::vector<Value>& elements() const&& = delete;
  auto begin() const& noexcept { return content().begin(); }
  auto begin() const&& = delete;
  auto end() const& noexcept { return content().end(); }
  auto end() const&& = delete;

  size_t size() const noexcept { return content().size(); }
  /// The element at the index; absent if there is none.
  Value operator[](size_t index) const noexcept {
    return index < size() ? content()[index] : Value();
  }

 private:
  friend class Value;
  struct Content;
  const std::vector<Value>& content() const noexcept;
  explicit Array(Reference object) noexcept : Value(std::move(object)) {}
};

/// A map from text to any value, its entries in bytewise order of their keys. An absent one is
/// empty.
class HALVERMONTE_EXPORT Dictionary : public Value {
 public:
  struct Entry {
    Text key;
    Value value;
  };

  Dictionary() noexcept = default;
  /// If two entries have one key, the later one is kept.
  explicit Dictionary(std::vector<Entry> entries);

  /// The entries. They are valid as long as any handle to this object is.
  const std::vector<Entry>& entries() const& noexcept { return content(); }
  const std::vector<Entry>& entries() const&& = delete;
  auto begin() const& noexcept { return content().begin(); }
  auto begin() const&& = delete;
  auto end() const& noexcept { return content().end(); }
  auto end() const&& = delete;

  size_t size() const noexcept { return content().size(); }

  /// The value under the key; absent if there is none.
  Value find(std::string_view key) const noexcept;

 private:
  friend class Value;
  struct Content;
  const std::vector<Entry>& content() const noexcept;
  explicit Dictionary(Reference object) noexcept : Value(std::move(object)) {}
};

/// A point in time, in seconds since 1970-01-01T00:00:00Z.
class HALVERMONTE_EXPORT Date : public Value {
 public:
  Date() noexcept = default;
  explicit Date(double secondsSince1970);

  /// REQUIRES: present.
  double secondsSince1970() const noexcept;
  /// Seconds from the earlier date to this one; negative if that one is later.
  double secondsSince(const Date& earlier) const noexcept {
    return secondsSince1970() - earlier.secondsSince1970();
  }

 private:
  friend class Value;
  struct Content;
  explicit Date(Reference object) noexcept : Value(std::move(object)) {}
};

/// A picture of the host's, opaque to the engine.
class HALVERMONTE_EXPORT Image : public Value {
 public:
  Image() noexcept = default;
  explicit Image(std::shared_ptr<const void> picture);

  std::shared_ptr<const void> picture() const noexcept;

 private:
  friend class Value;
  struct Content;
  explicit Image(Reference object) noexcept : Value(std::move(object)) {}
};

inline Text Value::asText() const noexcept { return Text(ifKind(Kind::text)); }
inline Number Value::asNumber() const noexcept { return Number(ifKind(Kind::number)); }
inline Array Value::asArray() const noexcept { return Array(ifKind(Kind::array)); }
inline Dictionary Value::asDictionary() const noexcept {
  return Dictionary(ifKind(Kind::dictionary));
}
inline Date Value::asDate() const noexcept { return Date(ifKind(Kind::date)); }
inline Image Value::asImage() const noexcept { return Image(ifKind(Kind::image)); }

}  // namespace halvermonte
