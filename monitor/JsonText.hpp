// JSON, written piece by piece. Numbers do not depend on the locale.
#pragma once

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "halvermonte/StatisticsData.hpp"
#include "halvermonte/Values.hpp"

namespace halvermonte {

/// Separators and brackets are the caller's: raw() writes them.
class JsonText {
 public:
  std::string take() { return std::move(out_); }

  void raw(std::string_view json) { out_ += json; }

  /// Bytes that are not UTF-8 become U+FFFD.
  void text(std::string_view characters);
  void text(const Text& value) { text(value.view()); }

  template <class Figure>
  void figure(Figure figure) {
    char digits[32];
    out_.append(digits, std::to_chars(digits, digits + sizeof digits, figure).ptr);
  }
  /// Null if the number is not finite.
  template <class Float>
  void finite(Float number) {
    if (std::isfinite(number)) return figure(number);
    raw("null");
  }

  void value(Flag flag) { raw(flag ? "true" : "false"); }
  void value(Int number) { figure(number); }
  void value(const Value& any);

 private:
  void takeCharacter(std::string_view& text);
  void escape(char32_t code);
  void number(const Number& boxed);
  void array(const Array& array);
  void dictionary(const Dictionary& dictionary);
  void date(double secondsSince1970);

  std::string out_;
};

}  // namespace halvermonte
