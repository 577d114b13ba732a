#include "monitor/TerminalKind.hpp"

#include <langinfo.h>

#include <cstdlib>
#include <string_view>

namespace halvermonte {
namespace {

std::string_view environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

bool isDumbTerminal() { return environment("TERM").empty() || environment("TERM") == "dumb"; }

bool wantsColour(Colours colours) {
  if (colours != Colours::ofTerminal) return colours == Colours::always;
  return environment("NO_COLOR").empty();
}

bool isUnicode() { return std::string_view(nl_langinfo(CODESET)) == "UTF-8"; }

bool hasLargeFont() { return !environment("TERM").starts_with("linux"); }

}  // namespace halvermonte
