#include "platform/linux/Text.hpp"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace halvermonte::linuxos {
namespace {

/// Blanks, line ends and NULs.
bool isBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r') || character == '\0';
}

template <class Integer>
std::optional<Integer> wholeNumber(std::string_view text) {
  const std::string_view digits = trimmed(text);
  Integer value{};
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::string squeezed(std::string_view text) {
  std::string result;
  for (const std::string_view word : words(text)) {
    if (!result.empty()) result += ' ';
    result += word;
  }
  return result;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (;;) {
    const size_t end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found;
  for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
    const auto end = std::find_if(text.begin(), text.end(), isBlank);
    found.emplace_back(text.begin(), end);
    text.remove_prefix(found.back().size());
  }
  return found;
}

std::optional<int64_t> integer(std::string_view text) { return wholeNumber<int64_t>(text); }

std::optional<uint64_t> unsignedInteger(std::string_view text) {
  return wholeNumber<uint64_t>(text);
}

bool isNumbered(std::string_view text, std::string_view prefix) {
  return text.starts_with(prefix) && text.size() > prefix.size() &&
         std::all_of(text.begin() + static_cast<ptrdiff_t>(prefix.size()), text.end(), isDigit);
}

std::optional<std::string_view> field(std::string_view text, std::string_view name,
                                      char separator) {
  for (const std::string_view line : split(text, '\n')) {
    const size_t end = line.find(separator);
    if (end == std::string_view::npos) continue;
    const std::string_view found = trimmed(line.substr(0, end));
    const bool same =
        found.size() == name.size() && strncasecmp(found.data(), name.data(), name.size()) == 0;
    if (same) return trimmed(line.substr(end + 1));
  }
  return std::nullopt;
}

}  // namespace halvermonte::linuxos
