// A value of a JSON text and its place there. Reading is strict: an unexpected value throws a
// MachineFileError that names the place and the expectation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <ranges>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/simulated/JsonValue.hpp"

namespace halvermonte {

/// REQUIRES: the tree, the file's name and the place that it was found in outlive this object.
class JsonPlace {
 public:
  using Names = std::initializer_list<std::string_view>;
  struct Member;

  /// The root.
  JsonPlace(const std::string& fileName, const JsonValue& root)
      : fileName_(&fileName), value_(&root) {}
  /// A member of an object, or an element of an array.
  JsonPlace at(std::string_view name, const JsonValue& value) const& {
    return {*this, value, name, 0};
  }
  JsonPlace at(size_t index, const JsonValue& value) const& { return {*this, value, {}, index}; }

  /// Throws the MachineFileError of this place.
  [[noreturn]] void refuse(std::string_view expectation) const;

  const std::string& fileName() const { return *fileName_; }
  /// The JSON pointer to this place; "" for the root.
  std::string pointer() const;
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

  /// The elements of an array, as a range of places.
  auto elements(std::string_view expectation = "an array") const& {
    const auto& array = get<JsonValue::Array>(expectation);
    const JsonValue* const first = array.data();
    return std::views::transform(array, [this, first](const JsonValue& element) {
      return at(static_cast<size_t>(&element - first), element);
    });
  }
  /// The members of an object, as a range of Members.
  auto members() const&;

  /// Refuses a value that is not an object, and any member with another name.
  void expectOnly(Names names) const { expectOnly(std::span<const std::string_view>(names)); }
  void expectOnly(std::span<const std::string_view> names) const;
  /// The member. Absent if it is not given.
  std::optional<JsonPlace> find(std::string_view name) const&;
  /// The member. Refused if it is not given.
  JsonPlace required(std::string_view name) const&;
  /// The one member that is given. Absent if none is given, refused if several are.
  std::optional<Member> atMostOneOf(Names names) const&;
  /// The one member that is given. Refused if none or several are given.
  Member exactlyOneOf(Names names) const&;

  // The places found in a temporary one would outlive it.
  void at(std::string_view name, const JsonValue& value) const&& = delete;
  void at(size_t index, const JsonValue& value) const&& = delete;
  void elements(std::string_view expectation = "") const&& = delete;
  void members() const&& = delete;
  void find(std::string_view name) const&& = delete;
  void required(std::string_view name) const&& = delete;
  void atMostOneOf(Names names) const&& = delete;
  void exactlyOneOf(Names names) const&& = delete;

 private:
  JsonPlace(const JsonPlace& parent, const JsonValue& value, std::string_view name, size_t index)
      : fileName_(parent.fileName_), value_(&value), parent_(&parent), name_(name), index_(index) {}

  template <class Content>
  const Content& get(std::string_view expectation) const {
    const Content* content = std::get_if<Content>(&value_->content);
    if (content == nullptr) refuse(expectation);
    return *content;
  }

  const std::string* fileName_;
  const JsonValue* value_;
  const JsonPlace* parent_ = nullptr;  ///< null for the root
  std::string_view name_;              ///< in an object
  size_t index_ = 0;                   ///< in an array
};

struct JsonPlace::Member {
  std::string_view name;
  JsonPlace place;
};

inline auto JsonPlace::members() const& {
  return std::views::transform(get<JsonValue::Object>("an object"),
                               [this](const JsonMember& member) {
                                 return Member{member.name, at(member.name, member.value)};
                               });
}

}  // namespace halvermonte
