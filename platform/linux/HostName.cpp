#include "platform/linux/HostName.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

constexpr char kUnquoted = '\0';

bool isEscapable(std::string_view rest, char quote) {
  if (rest.empty() || quote == '\'') return false;
  if (quote == kUnquoted) return rest.front() != '\n';
  const std::string_view special = "\"\\$`";
  return special.find(rest.front()) != special.npos;
}

/// The value at the start of the text, unquoted as a shell would. 'Single quotes' keep every
/// character. In "double quotes" \ escapes some characters. Without quotes \ escapes all of them,
/// and the value ends with the line.
std::string shellWord(std::string_view text) {
  const bool isQuoted = text.starts_with('"') || text.starts_with('\'');
  const char quote = isQuoted ? text.front() : kUnquoted;
  const char end = isQuoted ? quote : '\n';
  std::string word;
  for (size_t i = isQuoted ? 1 : 0; i < text.size() && text[i] != end; ++i) {
    if (text[i] == '\\' && isEscapable(text.substr(i + 1), quote)) ++i;
    word += text[i];
  }
  return isQuoted ? word : std::string(trimmed(word));
}

/// The texts that firmware has instead of a name.
constexpr auto kPlaceholders = std::to_array<std::string_view>(
    {"", "Default string", "Not Applicable", "Not Specified", "O.E.M", "OEM", "None",
     "Product Name", "System Product Name", "To Be Filled By O.E.M.", "To be filled by O.E.M.",
     "Undefined", "Unknown"});

}  // namespace

std::optional<std::string> assignedValue(std::string_view text, std::string_view variable) {
  std::optional<std::string> value;
  for (size_t start = 0; start < text.size();) {
    const std::string_view rest = text.substr(start);
    const std::string_view line = rest.substr(0, rest.find('\n'));
    const size_t equals = line.find('=');
    if (equals != line.npos && trimmed(line.substr(0, equals)) == variable) {
      const size_t first = rest.find_first_not_of(" \t", equals + 1);
      value = first == rest.npos ? "" : shellWord(rest.substr(first));
    }
    start += line.size() + 1;
  }
  return value;
}

std::optional<std::string> prettyHostName(SystemCalls& calls, const std::string& etc) {
  const std::string text = textOf(calls, etc + "/machine-info").value_or("");
  std::optional<std::string> name = assignedValue(text, "PRETTY_HOSTNAME");
  return name && !name->empty() ? name : std::nullopt;
}

std::optional<std::string> kernelHostName(SystemCalls& calls, const std::string& proc) {
  const std::string name = trimmedTextOf(calls, proc + "/sys/kernel/hostname");
  return name.empty() ? std::nullopt : std::optional(name);
}

std::string modelName(SystemCalls& calls, const std::string& sys) {
  for (const char* file : {"/firmware/devicetree/base/model", "/class/dmi/id/product_name",
                           "/class/dmi/id/board_name"}) {
    std::string name = squeezed(trimmedTextOf(calls, sys + file));
    if (std::find(kPlaceholders.begin(), kPlaceholders.end(), name) == kPlaceholders.end()) {
      return name;
    }
  }
  return "";
}

}  // namespace halvermonte::linuxos
