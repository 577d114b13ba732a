#include "monitor/json/JsonWriter.hpp"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"
#include "monitor/JsonText.hpp"
#include "monitor/json/IsoDate.hpp"
#include "platform/UTF8.hpp"

namespace halvermonte {

namespace {

class JsonWriter {
 public:
  std::string take() { return std::move(out_); }

  void raw(std::string_view json) { out_ += json; }

  void text(std::string_view characters) {
    out_ += '"';
    while (!characters.empty()) takeCharacter(characters);
    out_ += '"';
  }
  void text(const Text& value) { text(value.view()); }

  template <class Figure>
  void figure(Figure figure) {
    char digits[32];
    out_.append(digits, std::to_chars(digits, digits + sizeof digits, figure).ptr);
  }

  void value(Flag flag) { raw(flag ? "true" : "false"); }
  void value(Int number) { figure(number); }

  void value(const Value& any) {
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

 private:
  void takeCharacter(std::string_view& text) {
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

  void escape(char32_t code) {
    constexpr std::string_view kNamed = "\"\\\b\f\n\r\t", kLetters = "\"\\bfnrt";
    const size_t place = code < 0x80 ? kNamed.find(static_cast<char>(code)) : kNamed.npos;
    out_ += place == kNamed.npos ? jsonEscape(code) : std::string{'\\', kLetters[place]};
  }

  void number(const Number& boxed) {
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

  template <class Float>
  void finite(Float number) {
    if (std::isfinite(number)) return figure(number);
    raw("null");
  }

  void array(const Array& array) {
    std::string_view separator = "[";
    for (const Value& element : array) {
      raw(std::exchange(separator, ","));
      value(element);
    }
    raw(array.size() == 0 ? "[]" : "]");
  }

  void dictionary(const Dictionary& dictionary) {
    std::string_view separator = "{";
    for (const Dictionary::Entry& entry : dictionary) {
      raw(std::exchange(separator, ","));
      text(entry.key);
      raw(":");
      value(entry.value);
    }
    raw(dictionary.size() == 0 ? "{}" : "}");
  }

  void date(double secondsSince1970) {
    const std::string iso = isoDate(secondsSince1970);
    if (iso.empty()) return raw("null");
    text(iso);
  }

  std::string out_;
};

void addProcess(JsonWriter& json, const ProcessUse& process) {
  json.raw(",\"process\":{\"pid\":");
  json.figure(process.identifier);
  json.raw(",\"cpuPercent\":");
  json.value(process.percentOfOneCore ? Value(Number::ofFloat32(*process.percentOfOneCore))
                                      : Value());
  json.raw(process.hasEnded ? ",\"hasEnded\":true}" : ",\"hasEnded\":false}");
}

void addRecord(JsonWriter& json, const StatisticsData& record) {
  std::string_view separator = ",\"record\":{";
#define PROPERTY(name, Name, Type, initial, copy, turn) \
  json.raw(std::exchange(separator, ","));              \
  json.raw("\"" #name "\":");                           \
  json.value(record.name());
#include "halvermonte/properties.def"
  json.raw("}");
}

}  // namespace

std::string jsonLine(const PassView& view) {
  JsonWriter json;
  json.raw("{\"tick\":");
  json.figure(view.number);
  if (view.process) addProcess(json, *view.process);
  if (view.exception) {
    json.raw(",\"exception\":");
    json.text(*view.exception);
  } else {
    addRecord(json, *view.record);
  }
  json.raw("}\n");
  return json.take();
}

}  // namespace halvermonte
