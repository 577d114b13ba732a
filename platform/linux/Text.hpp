// Parses the kernel's texts. Nothing here reads a file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte::linuxos {

/// The text without blanks, line ends and NULs at both ends.
std::string_view trimmed(std::string_view text);

/// The text trimmed, with one space for each run of blanks inside.
std::string squeezed(std::string_view text);

/// The pieces between the separators. There is always one more piece than separators.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The words between blanks and line ends.
std::vector<std::string_view> words(std::string_view text);

/// The whole text as a decimal number; blanks and line ends around it are ignored. Absent if the
/// text is not a number or does not fit.
std::optional<int64_t> integer(std::string_view text);
std::optional<uint64_t> unsignedInteger(std::string_view text);

/// Whether the text is the prefix followed by digits only.
bool isNumbered(std::string_view text, std::string_view prefix);

/// The trimmed text after "name" and the separator, in the first line that begins with them. Absent
/// if there is no such line. The case of the name does not matter.
std::optional<std::string_view> field(std::string_view text, std::string_view name, char separator);

}  // namespace halvermonte::linuxos
