#include "tests/support/RecordTexts.hpp"

#include <cstdio>

namespace halvermonte::test {
namespace {

std::string numberText(const Number& number) {
  switch (number.form()) {
    case Number::Form::int32:
      return "int32 " + std::to_string(number.int32Value());
    case Number::Form::int64:
      return "int64 " + std::to_string(number.int64Value());
    case Number::Form::uint64:
      return "uint64 " + std::to_string(number.uint64Value());
    case Number::Form::float32:
    case Number::Form::float64:
      break;
  }
  char text[64];
  std::snprintf(text, sizeof text, "float%d %a", number.form() == Number::Form::float32 ? 32 : 64,
                number.float64Value());
  return text;
}

std::string described(int integer) { return std::to_string(integer); }

}  // namespace

std::string described(const Value& value) {
  switch (value.kind()) {
    case Value::Kind::absent:
      return "absent";
    case Value::Kind::text:
      return '"' + std::string(value.asText().str()) + '"';
    case Value::Kind::number:
      return numberText(value.asNumber());
    case Value::Kind::date:
      return "date " + std::to_string(value.asDate().secondsSince1970());
    case Value::Kind::image:
      return "image";
    case Value::Kind::array: {
      std::string text = "[";
      for (const Value& element : value.asArray()) text += described(element) + ' ';
      return text + ']';
    }
    case Value::Kind::dictionary: {
      std::string text = "{";
      for (const Dictionary::Entry& entry : value.asDictionary()) {
        text += described(entry.key) + ": " + described(entry.value) + ' ';
      }
      return text + '}';
    }
  }
  return {};
}

std::map<std::string, std::string> described(const StatisticsData& record) {
  std::map<std::string, std::string> texts;
#define PROPERTY(name, Name, Type, initial, copy, turn) texts[#name] = described(record.name());
#include "halvermonte/properties.def"
  return texts;
}

}  // namespace halvermonte::test
