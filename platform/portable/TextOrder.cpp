// The order in which texts are shown to people. It does not depend on the process's locale.
#include <algorithm>
#include <compare>
#include <cstddef>
#include <string_view>

#include "platform/Foundation.hpp"

namespace halvermonte {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

unsigned char folded(char c) {
  return static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

/// A run of digits taken from the front of a text: leading zeros apart from its value.
struct DigitRun {
  size_t zeros;
  std::string_view value;

  static DigitRun takenFrom(std::string_view& text) {
    const size_t zeros = std::min(text.find_first_not_of('0'), text.size());
    text.remove_prefix(zeros);
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto length = static_cast<size_t>(end - text.begin());
    const DigitRun run = {zeros, text.substr(0, length)};
    text.remove_prefix(length);
    return run;
  }
  std::strong_ordering comparedTo(const DigitRun& other) const {
    if (value.size() != other.value.size()) return value.size() <=> other.value.size();
    return value <=> other.value;
  }
};

std::strong_ordering compared(std::string_view first, std::string_view second) {
  const std::string_view wholeFirst = first;
  const std::string_view wholeSecond = second;
  std::strong_ordering byZeros = std::strong_ordering::equal;
  while (!first.empty() && !second.empty()) {
    if (isDigit(first.front()) && isDigit(second.front())) {
      const DigitRun a = DigitRun::takenFrom(first);
      const DigitRun b = DigitRun::takenFrom(second);
      if (const auto order = a.comparedTo(b); order != 0) return order;
      if (byZeros == 0) byZeros = b.zeros <=> a.zeros;  // more zeros stand first
    } else {
      if (const auto order = folded(first.front()) <=> folded(second.front()); order != 0) {
        return order;
      }
      first.remove_prefix(1);
      second.remove_prefix(1);
    }
  }
  if (const auto order = first.size() <=> second.size(); order != 0) return order;
  return byZeros != 0 ? byZeros : wholeFirst <=> wholeSecond;
}

}  // namespace

bool foundation::standsBefore(std::string_view first, std::string_view second) {
  return compared(first, second) < 0;
}

}  // namespace halvermonte
