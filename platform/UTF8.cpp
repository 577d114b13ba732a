#include "halvermonte/UTF8.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace halvermonte {
namespace {

/// The well-formed sequences: their first bytes, the range of the second one, which excludes
/// overlong forms and surrogates, and how many bytes follow the first.
struct Sequence {
  uint8_t firstLead, lastLead, lowest, highest;
  int continuations;
};
constexpr Sequence kSequences[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 1}, {0xE0, 0xE0, 0xA0, 0xBF, 2}, {0xE1, 0xEC, 0x80, 0xBF, 2},
    {0xED, 0xED, 0x80, 0x9F, 2}, {0xEE, 0xEF, 0x80, 0xBF, 2}, {0xF0, 0xF0, 0x90, 0xBF, 3},
    {0xF1, 0xF3, 0x80, 0xBF, 3}, {0xF4, 0xF4, 0x80, 0x8F, 3},
};

struct CodeRange {
  char32_t first, last;
};
constexpr CodeRange kUnprintable[] = {
    {0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C}, {0x200B, 0x200F},   {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
};

std::optional<char32_t> takeContinuations(const Sequence& sequence, uint8_t lead,
                                          std::string_view& text) {
  char32_t code = lead & (0x3FU >> sequence.continuations);
  uint8_t lowest = sequence.lowest, highest = sequence.highest;
  for (int i = 0; i < sequence.continuations; ++i) {
    const auto byte = text.empty() ? uint8_t{0} : static_cast<uint8_t>(text.front());
    if (byte < lowest || byte > highest) return std::nullopt;
    text.remove_prefix(1);
    code = code << 6 | (byte & 0x3FU);
    lowest = 0x80;
    highest = 0xBF;
  }
  return code;
}

}  // namespace

std::optional<char32_t> takeCodePoint(std::string_view& text) {
  const auto lead = static_cast<uint8_t>(text.front());
  text.remove_prefix(1);
  if (lead < 0x80) return lead;
  for (const Sequence& sequence : kSequences) {
    if (lead >= sequence.firstLead && lead <= sequence.lastLead) {
      return takeContinuations(sequence, lead, text);
    }
  }
  return std::nullopt;
}

bool isPrintable(char32_t code) {
  return std::none_of(
      std::begin(kUnprintable), std::end(kUnprintable),
      [code](const CodeRange& range) { return range.first <= code && code <= range.last; });
}

std::string printableText(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::string_view before = text;
    const std::optional<char32_t> code = takeCodePoint(text);
    const std::string_view bytes = before.substr(0, before.size() - text.size());
    shown += !code ? kReplacementUTF8 : isPrintable(*code) ? bytes : "?";
  }
  return shown;
}

}  // namespace halvermonte
