// Reading the kernel's texts. No function here touches a file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace halvermonte::linuxos {

/// Without the blanks, line ends and NULs at both ends.
std::string_view trimmed(std::string_view text);

/// Trimmed, and each run of blanks within it made one.
std::string squeezed(std::string_view text);

/// The pieces between the separators: one more than there are separators.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The words between blanks and line ends.
std::vector<std::string_view> words(std::string_view text);

/// The whole text as a decimal number, blanks and line ends around it aside; absent where it is
/// none.
std::optional<int64_t> integer(std::string_view text);
std::optional<uint64_t> unsignedInteger(std::string_view text);

/// Whether the text is the prefix and then one decimal number.
bool isNumbered(std::string_view text, std::string_view prefix);

/// What stands after "name" and the separator, trimmed, in the first line that begins so; absent
/// where no line does. The case of the name does not matter.
std::optional<std::string_view> field(std::string_view text, std::string_view name, char separator);

}  // namespace halvermonte::linuxos
