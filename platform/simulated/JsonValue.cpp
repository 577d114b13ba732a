#include "platform/simulated/JsonValue.hpp"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include "halvermonte/MachineFileError.hpp"

namespace halvermonte {
namespace {

/// Builds the tree from the parser's events. The parser always reads the last element of each open
/// container, so the tree shows the place.
class JsonBuilder : public nlohmann::json_sax<nlohmann::json> {
 public:
  JsonBuilder(std::string_view text, const std::string& fileName, std::string_view taken,
              const TakeElement& take, const JsonLimits& limits)
      : text_(text), fileName_(fileName), taken_(taken), take_(take), limits_(limits) {}

  JsonValue takeRoot() { return std::move(root_); }

  /// Throws the error for a text that is not JSON. REQUIRES: an offset within the text, or its
  /// size.
  [[noreturn]] void refuseText(size_t offset) const;

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override;
  bool number_float(number_float_t value, const string_t&) override { return add(value); }
  bool string(string_t& value) override { return add(std::move(value)); }
  bool binary(binary_t&) override { return false; }  // not in JSON
  bool start_object(std::size_t) override { return open(JsonValue::Object()); }
  bool key(string_t& name) override;
  bool end_object() override { return close(); }
  bool start_array(std::size_t) override { return open(JsonValue::Array()); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t position, const std::string& token,
                   const nlohmann::json::exception& error) override;

 private:
  struct Container {
    JsonValue* value;
    size_t taken = 0;  ///< elements of an array that are not in the tree any more
  };

  /// Adds an element to an innermost array. Returns the value to read next.
  JsonValue& addSlot();
  template <class Content>
  bool add(Content&& content) {
    addSlot().content = std::forward<Content>(content);
    return complete();
  }
  template <class Content>
  bool open(Content&& content);
  bool close();
  /// Call it when a value has been read.
  bool complete();

  /// Refuses the value to read next if the limit is reached.
  void expectFewer(size_t count, size_t limit, const char* what) const;
  /// Refuses an object that has a member twice.
  void expectDifferentNames(const JsonValue::Object& members);
  /// The pointer to the value to read next.
  std::string placeOfNext() const;
  /// The pointer to what is read in the container at that depth.
  std::string placeWithin(size_t depth) const;

  std::string_view text_;
  const std::string& fileName_;
  const std::string_view taken_;
  const TakeElement& take_;
  const JsonLimits& limits_;
  JsonValue root_;
  size_t values_ = 0;
  std::vector<Container> open_;
  std::vector<std::string_view> names_;  ///< of an object that is complete
};

JsonValue& JsonBuilder::addSlot() {
  expectFewer(values_++, limits_.values, " values in a file");
  if (open_.empty()) return root_;
  const Container& container = open_.back();
  auto& content = container.value->content;
  if (auto* array = std::get_if<JsonValue::Array>(&content)) {
    expectFewer(container.taken + array->size(), limits_.entries, " elements of an array");
    return array->emplace_back();
  }
  return std::get<JsonValue::Object>(content).back().value;
}

bool JsonBuilder::complete() {
  if (open_.size() != 2 || !take_) return true;
  auto* const array = std::get_if<JsonValue::Array>(&open_[1].value->content);
  const auto* const root = std::get_if<JsonValue::Object>(&root_.content);
  if (array == nullptr || root == nullptr || root->back().name != taken_) return true;
  take_(open_[1].taken++, array->back());
  array->pop_back();
  return true;
}

bool JsonBuilder::close() {
  const auto* const members = std::get_if<JsonValue::Object>(&open_.back().value->content);
  if (members != nullptr) expectDifferentNames(*members);
  open_.pop_back();
  return complete();
}

void JsonBuilder::expectFewer(size_t count, size_t limit, const char* what) const {
  if (count < limit) return;
  throw MachineFileError(fileName_, placeOfNext(), "at most " + std::to_string(limit) + what);
}

void JsonBuilder::expectDifferentNames(const JsonValue::Object& members) {
  names_.clear();
  for (const JsonMember& member : members) names_.push_back(member.name);
  std::sort(names_.begin(), names_.end());
  const auto twice = std::adjacent_find(names_.begin(), names_.end());
  if (twice == names_.end()) return;
  std::string place = placeWithin(open_.size() - 1);
  appendToPointer(place, *twice);
  throw MachineFileError(fileName_, place, "this member only once");
}

template <class Content>
bool JsonBuilder::open(Content&& content) {
  expectFewer(open_.size(), limits_.levels, " levels of nesting");
  JsonValue& value = addSlot();
  value.content = std::forward<Content>(content);
  open_.push_back({&value});
  return true;
}

bool JsonBuilder::number_unsigned(number_unsigned_t value) {
  if (std::in_range<int64_t>(value)) return add(static_cast<int64_t>(value));
  return add(static_cast<double>(value));
}

bool JsonBuilder::key(string_t& name) {
  auto& members = std::get<JsonValue::Object>(open_.back().value->content);
  const size_t count = members.size();
  members.push_back({std::move(name), {}});
  expectFewer(count, limits_.entries, " members of an object");
  return true;
}

bool JsonBuilder::parse_error(std::size_t position, const std::string&,
                              const nlohmann::json::exception& error) {
  constexpr int kNumberOverflow = 406;
  if (error.id == kNumberOverflow) {
    throw MachineFileError(fileName_, placeOfNext(), "a number within the range of a 64-bit float");
  }
  refuseText(std::min(std::max<size_t>(position, 1) - 1, text_.size()));
}

void JsonBuilder::refuseText(size_t offset) const {
  const std::string_view before = text_.substr(0, offset);
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const std::string_view line = before.substr(before.rfind('\n') + 1);
  const auto characters = std::count_if(line.begin(), line.end(), [](char byte) {
    return (static_cast<uint8_t>(byte) & 0xC0) != 0x80;  // not a continuation byte of UTF-8
  });
  throw MachineFileError(
      fileName_, "line " + std::to_string(lines + 1) + ", column " + std::to_string(characters + 1),
      "well-formed JSON in UTF-8");
}

std::string JsonBuilder::placeOfNext() const {
  const std::string pointer = placeWithin(open_.size());
  return pointer.empty() ? "/" : pointer;
}

std::string JsonBuilder::placeWithin(size_t depth) const {
  std::string pointer;
  for (size_t i = 0; i < depth; ++i) {
    const auto& content = open_[i].value->content;
    if (const auto* array = std::get_if<JsonValue::Array>(&content)) {
      const bool isInnermost = i + 1 == open_.size();
      const size_t read = open_[i].taken + array->size();
      appendToPointer(pointer, std::to_string(isInnermost ? read : read - 1));
    } else {
      appendToPointer(pointer, std::get<JsonValue::Object>(content).back().name);
    }
  }
  return pointer;
}

}  // namespace

JsonValue parseJson(std::string_view text, const std::string& fileName, std::string_view taken,
                    const TakeElement& take, const JsonLimits& limits) {
  JsonBuilder builder(text, fileName, taken, take, limits);
  // The parser would stop at a NUL and ignore the rest.
  const size_t nul = text.find('\0');
  if (nul != std::string_view::npos) builder.refuseText(nul);
  nlohmann::json::sax_parse(text.begin(), text.end(), &builder);
  return builder.takeRoot();
}

void appendToPointer(std::string& pointer, std::string_view token) {
  pointer += '/';
  for (const char character : token) {
    if (character == '~') {
      pointer += "~0";
    } else if (character == '/') {
      pointer += "~1";
    } else if (static_cast<uint8_t>(character) < 0x20 || character == 0x7F) {
      char escaped[7];
      std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(character));
      pointer += escaped;
    } else {
      pointer += character;
    }
  }
}

}  // namespace halvermonte
