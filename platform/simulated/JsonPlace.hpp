// A value of a JSON text and its place there. Reading is strict: an unexpected value throws a
// MachineFileError that names the place and the expectation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/simulated/JsonValue.hpp"

namespace halvermonte {

/// REQUIRES: the tree and the file's name outlive this object.
class JsonPlace {
 public:
  using Names = std::initializer_list<std::string_view>;
  struct Member;

  JsonPlace(const std::string& fileName, const JsonValue& root)
      : JsonPlace(fileName, root, std::string()) {}

  /// Throws the MachineFileError of this place.
  [[noreturn]] void refuse(std::string_view expectation) const;

  const JsonValue& value() const { return *value_; }
  bool isNull() const { return std::holds_alternative<std::nullptr_t>(value_->content); }

  const std::string& text(std::string_view expectation = "a text") const;
  /// The bytes of a text of hex digits.
  std::string hexBytes(std::string_view expectation) const;
  double number() const;
  int64_t integer(int64_t least, int64_t greatest) const;
  /// An integer in the full range of the type.
  template <class Integer>
  Integer integer() const {
    using Limits = std::numeric_limits<Integer>;
    return static_cast<Integer>(integer(Limits::min(), Limits::max()));
  }
  /// One of the texts, as its index among them.
  size_t oneOfTexts(Names texts) const;

  std::vector<JsonPlace> elements(std::string_view expectation = "an array") const;
  std::vector<Member> members() const;

  /// Refuses a value that is not an object, and any member with another name.
  void expectOnly(Names names) const { expectOnly(std::span<const std::string_view>(names)); }
  void expectOnly(std::span<const std::string_view> names) const;
  /// The member. Absent if it is not given.
  std::optional<JsonPlace> find(std::string_view name) const;
  /// The member. Refused if it is not given.
  JsonPlace required(std::string_view name) const;
  /// The one member that is given. Absent if none is given, refused if several are.
  std::optional<Member> atMostOneOf(Names names) const;
  /// The one member that is given. Refused if none or several are given.
  Member exactlyOneOf(Names names) const;

 private:
  JsonPlace(const std::string& fileName, const JsonValue& value, std::string pointer)
      : fileName_(&fileName), value_(&value), pointer_(std::move(pointer)) {}

  template <class Content>
  const Content& get(std::string_view expectation) const;
  JsonPlace at(std::string_view token, const JsonValue& value) const;

  const std::string* fileName_;
  const JsonValue* value_;
  std::string pointer_;
};

struct JsonPlace::Member {
  std::string_view name;
  JsonPlace place;
};

}  // namespace halvermonte
