#include "platform/simulated/JsonValue.hpp"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <unordered_set>
#include <utility>

#include "halvermonte/MachineFileError.hpp"

namespace halvermonte {
namespace {

/// Builds the tree from the parser's events. The parser always reads the last element of each open
/// container, so the tree shows the place.
class JsonBuilder : public nlohmann::json_sax<nlohmann::json> {
 public:
  JsonBuilder(std::string_view text, const std::string& fileName)
      : text_(text), fileName_(fileName) {}

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
    std::unordered_set<std::string> names;  ///< of an object, so far
  };

  /// Adds an element to an innermost array. Returns the value to read next.
  JsonValue& addSlot();
  template <class Content>
  bool add(Content&& content) {
    addSlot().content = std::forward<Content>(content);
    return true;
  }
  template <class Content>
  bool open(Content&& content);
  bool close() {
    open_.pop_back();
    return true;
  }

  /// The pointer to the value to read next.
  std::string placeOfNext() const;

  std::string_view text_;
  const std::string& fileName_;
  JsonValue root_;
  std::vector<Container> open_;
};

JsonValue& JsonBuilder::addSlot() {
  if (open_.empty()) return root_;
  auto& content = open_.back().value->content;
  if (auto* array = std::get_if<JsonValue::Array>(&content)) return array->emplace_back();
  return std::get<JsonValue::Object>(content).back().value;
}

template <class Content>
bool JsonBuilder::open(Content&& content) {
  if (open_.size() == kDeepestJson) {
    throw MachineFileError(fileName_, placeOfNext(),
                           "at most " + std::to_string(kDeepestJson) + " levels of nesting");
  }
  JsonValue& value = addSlot();
  value.content = std::forward<Content>(content);
  open_.push_back({&value, {}});
  return true;
}

bool JsonBuilder::number_unsigned(number_unsigned_t value) {
  if (std::in_range<int64_t>(value)) return add(static_cast<int64_t>(value));
  return add(static_cast<double>(value));
}

bool JsonBuilder::key(string_t& name) {
  Container& object = open_.back();
  const bool isNew = object.names.insert(name).second;
  std::get<JsonValue::Object>(object.value->content).push_back({std::move(name), {}});
  if (!isNew) throw MachineFileError(fileName_, placeOfNext(), "this member only once");
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
  std::string pointer;
  for (const Container& container : open_) {
    const auto& content = container.value->content;
    if (const auto* array = std::get_if<JsonValue::Array>(&content)) {
      const bool isInnermost = &container == &open_.back();
      appendToPointer(pointer, std::to_string(isInnermost ? array->size() : array->size() - 1));
    } else {
      appendToPointer(pointer, std::get<JsonValue::Object>(content).back().name);
    }
  }
  return pointer.empty() ? "/" : pointer;
}

}  // namespace

JsonValue parseJson(std::string_view text, const std::string& fileName) {
  JsonBuilder builder(text, fileName);
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
