#include "monitor/JsonText.hpp"

#include <cstddef>
#include <optional>

#include "halvermonte/UTF8.hpp"
#include "monitor/IsoDate.hpp"
#include "monitor/JsonEscapes.hpp"

namespace halvermonte {

void JsonText::text(std::string_view characters) {
  out_ += '"';
  while (!characters.empty()) takeCharacter(characters);
  out_ += '"';
}

void JsonText::value(const Value& any) {
  switch (any.kind()) {
    case Value::Kind::text:
      return text(any.asText());
    case Value::Kind::number:
      return number(any.asNumber());
    case Value::Kind::array:
      return array(any.asArray());
    case Value::Kind::dictionary:
      return dictionary(any.asDictionary());
    case Value::Kind::date:
      return date(any.asDate().secondsSince1970());
    case Value::Kind::absent:
    case Value::Kind::image:
      return raw("null");
  }
}

void JsonText::takeCharacter(std::string_view& text) {
  const std::string_view before = text;
  const std::optional<char32_t> code = takeCodePoint(text);
  if (!code) {
    out_ += kReplacementUTF8;
  } else if (*code == '"' || *code == '\\' || !isPrintable(*code)) {
    escape(*code);
  } else {
    out_ += before.substr(0, before.size() - text.size());
  }
}

void JsonText::escape(char32_t code) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t", kLetters = "\"\\bfnrt";
  const size_t place = code < 0x80 ? kNamed.find(static_cast<char>(code)) : kNamed.npos;
  out_ += place == kNamed.npos ? jsonEscape(code) : std::string{'\\', kLetters[place]};
}

void JsonText::number(const Number& boxed) {
  switch (boxed.form()) {
    case Number::Form::int32:
      return figure(boxed.int32Value());
    case Number::Form::int64:
      return figure(boxed.int64Value());
    case Number::Form::uint64:
      return figure(boxed.uint64Value());
    case Number::Form::float32:
      return finite(boxed.float32Value());
    case Number::Form::float64:
      return finite(boxed.float64Value());
  }
}

void JsonText::array(const Array& array) {
  std::string_view separator = "[";
  for (const Value& element : array) {
    raw(std::exchange(separator, ","));
    value(element);
  }
  raw(array.size() == 0 ? "[]" : "]");
}

void JsonText::dictionary(const Dictionary& dictionary) {
  std::string_view separator = "{";
  for (const Dictionary::Entry& entry : dictionary) {
    raw(std::exchange(separator, ","));
    text(entry.key);
    raw(":");
    value(entry.value);
  }
  raw(dictionary.size() == 0 ? "{}" : "}");
}

void JsonText::date(double secondsSince1970) {
  const std::string iso = isoDate(secondsSince1970);
  if (iso.empty()) return raw("null");
  text(iso);
}

}  // namespace halvermonte
