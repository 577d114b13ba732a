#include "capi/Values.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "capi/Errors.hpp"

using halvermonte::Array;
using halvermonte::Dictionary;
using halvermonte::Number;
using halvermonte::Text;
using halvermonte::Value;
using halvermonte::capi::Failure;
using halvermonte::capi::handleOf;
using halvermonte::capi::require;
using halvermonte::capi::requireBelow;
using halvermonte::capi::statusOf;

namespace {

using Kind = Value::Kind;
using Form = Number::Form;

// The constants are the enumerators' numbers.
static_assert(static_cast<int32_t>(Kind::absent) == HALVERMONTE_ABSENT);
static_assert(static_cast<int32_t>(Kind::text) == HALVERMONTE_TEXT);
static_assert(static_cast<int32_t>(Kind::number) == HALVERMONTE_NUMBER);
static_assert(static_cast<int32_t>(Kind::array) == HALVERMONTE_ARRAY);
static_assert(static_cast<int32_t>(Kind::dictionary) == HALVERMONTE_DICTIONARY);
static_assert(static_cast<int32_t>(Kind::date) == HALVERMONTE_DATE);
static_assert(static_cast<int32_t>(Kind::image) == HALVERMONTE_IMAGE);
static_assert(static_cast<int32_t>(Form::int32) == HALVERMONTE_INT32);
static_assert(static_cast<int32_t>(Form::int64) == HALVERMONTE_INT64);
static_assert(static_cast<int32_t>(Form::uint64) == HALVERMONTE_UINT64);
static_assert(static_cast<int32_t>(Form::float32) == HALVERMONTE_FLOAT);
static_assert(static_cast<int32_t>(Form::float64) == HALVERMONTE_DOUBLE);

const char* nameOf(Kind kind) {
  constexpr std::array kNames = {"nothing",      "a text", "a number", "an array",
                                 "a dictionary", "a date", "an image"};
  return kNames[static_cast<size_t>(kind)];
}

const Value& valueOf(const halvermonte_value* handle) {
  require(handle, "value");
  return *reinterpret_cast<const Value*>(handle);
}

[[noreturn]] void refuseKind(const Value& value, const std::string& expected) {
  throw Failure(HALVERMONTE_WRONG_KIND,
                "value: expected " + expected + ", not " + nameOf(value.kind()));
}

const Value& valueOf(const halvermonte_value* handle, Kind expected) {
  const Value& value = valueOf(handle);
  if (value.kind() != expected) refuseKind(value, nameOf(expected));
  return value;
}

size_t countOf(const Value& value) {
  if (value.kind() == Kind::array) return value.asArray().size();
  if (value.kind() == Kind::dictionary) return value.asDictionary().size();
  refuseKind(value, "an array or a dictionary");
}

/// Stores what the number gives.
template <class Target>
halvermonte_status storeNumber(const halvermonte_value* value, Target* target,
                               Target (Number::*read)() const noexcept) noexcept {
  return statusOf([&] {
    require(target, "number");
    *target = (valueOf(value, Kind::number).asNumber().*read)();
  });
}

}  // namespace

halvermonte_status halvermonte_value_kind(const halvermonte_value* value, halvermonte_kind* kind) {
  return statusOf([&] {
    require(kind, "kind");
    *kind = static_cast<halvermonte_kind>(valueOf(value).kind());
  });
}

halvermonte_status halvermonte_value_text(const halvermonte_value* value, const char** text,
                                          size_t* size) {
  return statusOf([&] {
    require(text, "text");
    const Text characters = valueOf(value, Kind::text).asText();
    *text = characters.view().data();
    if (size != nullptr) *size = characters.view().size();
  });
}

halvermonte_status halvermonte_value_number_form(const halvermonte_value* value,
                                                 halvermonte_number_form* form) {
  return statusOf([&] {
    require(form, "form");
    const Number number = valueOf(value, Kind::number).asNumber();
    *form = static_cast<halvermonte_number_form>(number.form());
  });
}

halvermonte_status halvermonte_value_int64(const halvermonte_value* value, int64_t* number) {
  return storeNumber(value, number, &Number::int64Value);
}

halvermonte_status halvermonte_value_uint64(const halvermonte_value* value, uint64_t* number) {
  return storeNumber(value, number, &Number::uint64Value);
}

halvermonte_status halvermonte_value_double(const halvermonte_value* value, double* number) {
  return storeNumber(value, number, &Number::float64Value);
}

halvermonte_status halvermonte_value_date(const halvermonte_value* value, double* seconds) {
  return statusOf([&] {
    require(seconds, "seconds");
    *seconds = valueOf(value, Kind::date).asDate().secondsSince1970();
  });
}

halvermonte_status halvermonte_value_count(const halvermonte_value* value, size_t* count) {
  return statusOf([&] {
    require(count, "count");
    *count = countOf(valueOf(value));
  });
}

halvermonte_status halvermonte_value_element(const halvermonte_value* array, size_t index,
                                             const halvermonte_value** element) {
  return statusOf([&] {
    require(element, "element");
    const Array content = valueOf(array, Kind::array).asArray();
    requireBelow(content.size(), index, "index");
    *element = handleOf(content.elements()[index]);
  });
}

halvermonte_status halvermonte_value_entry(const halvermonte_value* dictionary, size_t index,
                                           const halvermonte_value** key,
                                           const halvermonte_value** entry) {
  return statusOf([&] {
    require(key, "key");
    require(entry, "entry");
    const Dictionary content = valueOf(dictionary, Kind::dictionary).asDictionary();
    requireBelow(content.size(), index, "index");
    *key = handleOf(content.entries()[index].key);
    *entry = handleOf(content.entries()[index].value);
  });
}

halvermonte_status halvermonte_value_find(const halvermonte_value* dictionary, const char* key,
                                          const halvermonte_value** entry) {
  return statusOf([&] {
    require(key, "key");
    require(entry, "entry");
    const Dictionary content = valueOf(dictionary, Kind::dictionary).asDictionary();
    const auto found = std::ranges::find_if(
        content.entries(), [key](const Dictionary::Entry& each) { return each.key == key; });
    if (found == content.end()) {
      throw Failure(HALVERMONTE_UNKNOWN_NAME,
                    "the dictionary has no key \"" + std::string(key) + "\"");
    }
    *entry = handleOf(found->value);
  });
}
