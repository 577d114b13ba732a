// A line of a report: pieces of text with their ink, measured in the cells of a terminal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte {

/// How a piece stands out where colours are used. No meaning is in the ink alone.
enum class Ink : uint8_t { plain, strong, faint, warm, hot };

struct Span {
  std::string text;
  Ink ink = Ink::plain;
};
using Line = std::vector<Span>;

/// The cells that a text takes: 2 for a wide character, 0 for a combining one.
size_t cells(std::string_view text);
size_t cells(const Line& line);

/// The text in exactly that many cells: filled with blanks at its end, or cut there.
std::string leftAligned(std::string_view text, size_t width);
/// The text with blanks before it, never cut.
std::string rightAligned(std::string_view text, size_t width);

/// The line, cut where it takes more cells.
Line cut(const Line& line, size_t width);

/// The text fit to be shown: control characters and bytes that are no UTF-8 as "?" or U+FFFD;
/// without `unicode`, "?" for every character beyond ASCII.
std::string printable(std::string_view text, bool unicode);

/// The line as bytes, without a line feed and without blanks at its end.
std::string rendered(const Line& line, bool colour);

}  // namespace halvermonte
