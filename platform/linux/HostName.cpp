#include "platform/linux/HostName.hpp"

#include <algorithm>
#include <array>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

bool isEscapable(std::string_view rest, char quote) {
  if (rest.empty() || quote == '\'') return false;
  const std::string_view special = "\"\\$`";
  return quote == '"' ? special.find(rest.front()) != special.npos : rest.front() != '\n';
}

/// What a shell makes of the word that the text begins with: 'as it is', "with \ before some
/// characters", or bare\ to the end of the line.
std::string shellWord(std::string_view text) {
  const char quote = text.starts_with('"') || text.starts_with('\'') ? text.front() : '\0';
  std::string word;
  for (size_t i = quote == '\0' ? 0 : 1; i < text.size(); ++i) {
    const char character = text[i];
    if (character == (quote == '\0' ? '\n' : quote)) break;
    word += character == '\\' && isEscapable(text.substr(i + 1), quote) ? text[++i] : character;
  }
  return quote == '\0' ? std::string(trimmed(word)) : word;
}

/// What boards carry whose maker wrote no name.
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
  const std::string name = wordingOf(calls, proc + "/sys/kernel/hostname");
  return name.empty() ? std::nullopt : std::optional(name);
}

std::string modelName(SystemCalls& calls, const std::string& sys) {
  for (const char* file : {"/firmware/devicetree/base/model", "/class/dmi/id/product_name",
                           "/class/dmi/id/board_name"}) {
    std::string name = squeezed(wordingOf(calls, sys + file));
    if (std::find(kPlaceholders.begin(), kPlaceholders.end(), name) == kPlaceholders.end()) {
      return name;
    }
  }
  return "";
}

}  // namespace halvermonte::linuxos
