// The host's texts, translated by gettext.
#include <langinfo.h>
#include <libintl.h>

#include <clocale>
#include <string>
#include <string_view>

#include "platform/Foundation.hpp"

namespace halvermonte {

std::string foundation::bundleText(const char* key) {
  const char* const domain = textdomain(nullptr);
  const char* const bound = bind_textdomain_codeset(domain, nullptr);
  const std::string hosts = bound != nullptr ? bound : nl_langinfo(CODESET);
  const std::string_view language = std::setlocale(LC_MESSAGES, nullptr);
  if (hosts == "UTF-8" || language == "C") return gettext(key);
  // gettext gives text in the host's charset, and none if a character is not in it. It is asked in
  // UTF-8, and the host's own later calls get what they got before.
  bind_textdomain_codeset(domain, "UTF-8");
  std::string text = gettext(key);
  bind_textdomain_codeset(domain, hosts.c_str());
  return text;
}

}  // namespace halvermonte
