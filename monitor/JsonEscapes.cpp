#include "monitor/JsonEscapes.hpp"

#include <cstdio>
#include <optional>

#include "halvermonte/UTF8.hpp"

namespace halvermonte {
namespace {

std::string escapeOfUnit(unsigned unit) {
  char escape[8];
  std::snprintf(escape, sizeof escape, "\\u%04x", unit);
  return escape;
}

}  // namespace

std::string jsonEscape(char32_t code) {
  constexpr char32_t kBasicPlaneEnd = 0x10000;
  if (code < kBasicPlaneEnd) return escapeOfUnit(code);
  const char32_t beyond = code - kBasicPlaneEnd;
  return escapeOfUnit(0xD800 + (beyond >> 10)) + escapeOfUnit(0xDC00 + (beyond & 0x3FF));
}

std::string escapedJson(std::string_view json) {
  std::string escaped;
  escaped.reserve(json.size());
  while (!json.empty()) {
    const std::string_view before = json;
    const std::optional<char32_t> code = takeCodePoint(json);
    if (!code || *code == '\n' || isPrintable(*code)) {
      escaped += before.substr(0, before.size() - json.size());
    } else {
      escaped += jsonEscape(*code);
    }
  }
  return escaped;
}

}  // namespace halvermonte
