#include "platform/linux/hwmon/NameWords.hpp"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>

#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// The usual spelling of words that drivers write in lower case.
constexpr auto kSpellings = std::to_array<std::string_view>(
    {"ASIC", "CPU", "DDR", "GPU", "MAC", "NPU", "PCH", "PCIe", "PHY", "PSU", "SoC", "VRM"});

/// They add nothing, as all of these are temperatures.
constexpr auto kEndings =
    std::to_array<std::string_view>({"Temperature", "Thermal Index", "Thermal", "Temp"});

bool isSameWord(std::string_view first, std::string_view second) {
  return first.size() == second.size() &&
         strncasecmp(first.data(), second.data(), first.size()) == 0;
}

bool isLetter(char character) { return std::isalpha(static_cast<unsigned char>(character)) != 0; }

/// Spells a word, or its part before a number or "@", as people do.
std::string spelled(std::string_view word) {
  const auto end = std::find_if_not(word.begin(), word.end(), isLetter);
  const std::string_view letters(word.begin(), end);
  for (const std::string_view spelling : kSpellings) {
    if (isSameWord(letters, spelling)) return std::string(spelling).append(end, word.end());
  }
  return std::string(word);
}

std::string_view withoutEnding(std::string_view text) {
  for (const std::string_view ending : kEndings) {
    if (text.size() <= ending.size()) continue;
    const size_t start = text.size() - ending.size();
    if (text[start - 1] == ' ' && isSameWord(text.substr(start), ending)) {
      return text.substr(0, start);
    }
  }
  return text;
}

std::string spelledWords(std::string_view text) {
  std::string result;
  for (const std::string_view word : words(text)) {
    if (!result.empty()) result += ' ';
    result += spelled(word);
  }
  if (!result.empty())
    result[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(result[0])));
  return result;
}

}  // namespace

std::string printableWords(std::string_view text) {
  std::string result(text);
  std::replace_if(
      result.begin(), result.end(),
      [](char character) { return character < ' ' || character > '~'; }, '?');
  return result;
}

std::string wordsOfLabel(std::string_view label) {
  std::string text = printableWords(label);
  std::replace(text.begin(), text.end(), '_', ' ');
  std::string_view rest = trimmed(text);
  const size_t firstEnd = std::min(rest.find(' '), rest.size());
  if (isNumbered(rest.substr(0, firstEnd), "temp")) rest = trimmed(rest.substr(firstEnd));
  rest = withoutEnding(rest);
  return isNumbered(rest, "") ? "" : spelledWords(rest);
}

std::string wordsOfZone(std::string_view driver) {
  constexpr std::string_view kEnd = "_thermal";
  if (driver.ends_with(kEnd) && driver != kEnd) driver.remove_suffix(kEnd.size());
  std::string text = printableWords(driver);
  std::replace(text.begin(), text.end(), '_', ' ');
  return spelledWords(text);
}

std::string numberAtEnd(std::string_view text) {
  const size_t last = text.find_last_not_of("0123456789");
  return std::string(text.substr(last == text.npos ? 0 : last + 1));
}

}  // namespace halvermonte::linuxos
