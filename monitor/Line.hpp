// A line of a report: pieces of text with their ink, measured in the cells of a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

/// How a piece stands out when colours are used. The text has its meaning without them, too.
enum class Ink : uint8_t { plain, strong, faint, warm, hot };

struct Span {
  std::string text;
  Ink ink = Ink::plain;
};
using Line = std::vector<Span>;

/// How many cells a text takes: 2 for a wide character, 0 for a combining one.
size_t cells(std::string_view text);
size_t cells(const Line& line);

/// The text in exactly that many cells, padded with blanks or cut at its end.
std::string leftAligned(std::string_view text, size_t width);
/// The text with blanks before it; a text that is too long is not cut.
std::string rightAligned(std::string_view text, size_t width);

/// The line, cut if it takes more cells.
Line cut(const Line& line, size_t width);

/// The text as a terminal may show it: "?" for a control character or one that hides or reorders
/// others, and U+FFFD for bytes that are not UTF-8. Without `unicode`, "?" for every character
/// beyond ASCII.
std::string printable(std::string_view text, bool unicode);

/// The line as bytes, without blanks at its end and without a line feed.
std::string rendered(const Line& line, bool colour);

}  // namespace halvermonte
