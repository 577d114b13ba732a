#include "monitor/Line.hpp"

#include <algorithm>
#include <iterator>
#include <optional>

#include "halvermonte/UTF8.hpp"

namespace halvermonte {

namespace {

struct CodeRange {
  char32_t first, last;
};

// The blocks of characters that take no cell of their own, and of those that take two.
constexpr CodeRange kCombining[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A}, {0x064B, 0x065F},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2064},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF},
};
constexpr CodeRange kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},
    {0xA000, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <size_t count>
bool isIn(const CodeRange (&ranges)[count], char32_t code) {
  return std::any_of(std::begin(ranges), std::end(ranges), [code](const CodeRange& range) {
    return range.first <= code && code <= range.last;
  });
}

/// The cells of the next character, which it takes off the text.
size_t takeCells(std::string_view& text) {
  const char32_t code = takeCodePoint(text).value_or(kReplacementCharacter);
  if (code < std::begin(kCombining)->first) return 1;
  if (isIn(kCombining, code)) return 0;
  return isIn(kWide, code) ? 2 : 1;
}

// The longest beginning of the text that fits into the cells.
std::string_view beginning(std::string_view text, size_t width) {
  std::string_view rest = text;
  while (!rest.empty()) {
    std::string_view next = rest;
    const size_t needed = takeCells(next);
    if (needed > width) break;
    width -= needed;
    rest = next;
  }
  return text.substr(0, text.size() - rest.size());
}

std::string_view sequenceOf(Ink ink) {
  switch (ink) {
    case Ink::plain:
      return "";
    case Ink::strong:
      return "\033[1m";
    case Ink::faint:
      return "\033[2m";
    case Ink::warm:
      return "\033[33m";
    case Ink::hot:
      return "\033[31m";
  }
  return "";
}

}  // namespace

size_t cells(std::string_view text) {
  size_t count = 0;
  while (!text.empty()) count += takeCells(text);
  return count;
}

size_t cells(const Line& line) {
  size_t count = 0;
  for (const Span& span : line) count += cells(span.text);
  return count;
}

std::string leftAligned(std::string_view text, size_t width) {
  std::string aligned(beginning(text, width));
  aligned.append(width - cells(aligned), ' ');
  return aligned;
}

std::string rightAligned(std::string_view text, size_t width) {
  const size_t needed = cells(text);
  return std::string(width > needed ? width - needed : 0, ' ').append(text);
}

Line cut(const Line& line, size_t width) {
  Line kept;
  for (const Span& span : line) {
    const std::string_view text = beginning(span.text, width);
    kept.push_back({std::string(text), span.ink});
    if (text.size() < span.text.size()) break;
    width -= cells(text);
  }
  return kept;
}

std::string printable(std::string_view text, bool unicode) {
  std::string shown = printableText(text);
  if (unicode) return shown;
  std::string ascii;
  for (std::string_view rest = shown; !rest.empty();) {
    const char32_t code = takeCodePoint(rest).value_or(kReplacementCharacter);
    ascii += code < 0x80 ? static_cast<char>(code) : '?';
  }
  return ascii;
}

std::string rendered(const Line& line, bool colour) {
  std::string bytes;
  for (const Span& span : line) {
    const std::string_view sequence = colour ? sequenceOf(span.ink) : "";
    bytes.append(sequence).append(span.text);
    if (!sequence.empty()) bytes += "\033[0m";
  }
  bytes.erase(bytes.find_last_not_of(' ') + 1);
  return bytes;
}

}  // namespace halvermonte
