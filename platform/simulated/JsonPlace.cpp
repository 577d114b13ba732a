#include "platform/simulated/JsonPlace.hpp"

#include <algorithm>
#include <limits>
#include <utility>

#include "halvermonte/MachineFileError.hpp"
#include "platform/portable/HexText.hpp"

namespace halvermonte {
namespace {

std::string joined(std::span<const std::string_view> names) {
  std::string list;
  for (const std::string_view name : names) {
    if (!list.empty()) list += ", ";
    list += name;
  }
  return list;
}

std::string expectedInteger(int64_t least, int64_t greatest) {
  using Limits = std::numeric_limits<int64_t>;
  if (least == Limits::min() && greatest == Limits::max()) return "a signed 64-bit integer";
  return "an integer from " + std::to_string(least) + " to " + std::to_string(greatest);
}

}  // namespace

void JsonPlace::refuse(std::string_view expectation) const {
  const std::string place = pointer();
  throw MachineFileError(*fileName_, place.empty() ? "/" : place, expectation);
}

std::string JsonPlace::pointer() const {
  if (parent_ == nullptr) return "";
  std::string pointer = parent_->pointer();
  const bool isElement = std::holds_alternative<JsonValue::Array>(parent_->value_->content);
  appendToPointer(pointer, isElement ? std::to_string(index_) : std::string(name_));
  return pointer;
}

const std::string& JsonPlace::text(std::string_view expectation) const {
  return get<std::string>(expectation);
}

std::string JsonPlace::hexBytes(std::string_view expectation) const {
  std::optional<std::string> bytes = bytesOfHex(text(expectation));
  if (!bytes) refuse(expectation);
  return *std::move(bytes);
}

double JsonPlace::number() const {
  if (const auto* integer = std::get_if<int64_t>(&value_->content)) {
    return static_cast<double>(*integer);
  }
  return get<double>("a number");
}

int64_t JsonPlace::integer(int64_t least, int64_t greatest) const {
  const auto* integer = std::get_if<int64_t>(&value_->content);
  if (integer == nullptr || *integer < least || *integer > greatest) {
    refuse(expectedInteger(least, greatest));
  }
  return *integer;
}

size_t JsonPlace::oneOfTexts(Names texts) const {
  const auto* text = std::get_if<std::string>(&value_->content);
  const auto found = text == nullptr
                         ? texts.end()
                         : std::find(texts.begin(), texts.end(), std::string_view(*text));
  if (found == texts.end()) refuse("one of " + joined(texts));
  return static_cast<size_t>(found - texts.begin());
}

void JsonPlace::expectOnly(std::span<const std::string_view> names) const {
  for (const auto& [name, value] : get<JsonValue::Object>("an object")) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      at(name, value).refuse("one of " + joined(names));
    }
  }
}

std::optional<JsonPlace> JsonPlace::find(std::string_view name) const& {
  for (const auto& member : get<JsonValue::Object>("an object")) {
    if (member.name == name) return at(name, member.value);
  }
  return std::nullopt;
}

JsonPlace JsonPlace::required(std::string_view name) const& {
  std::optional<JsonPlace> member = find(name);
  if (!member) at(name, *value_).refuse("a value, as the member is required");
  return *member;
}

std::optional<JsonPlace::Member> JsonPlace::atMostOneOf(Names names) const& {
  std::optional<Member> given;
  for (const std::string_view name : names) {
    std::optional<JsonPlace> member = find(name);
    if (!member) continue;
    if (given) refuse("only one of " + joined(names));
    given = Member{name, *member};
  }
  return given;
}

JsonPlace::Member JsonPlace::exactlyOneOf(Names names) const& {
  std::optional<Member> given = atMostOneOf(names);
  if (!given) refuse("one of " + joined(names));
  return *given;
}

}  // namespace halvermonte
