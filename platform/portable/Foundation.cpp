#include "platform/Foundation.hpp"
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include "halvermonte/Exceptions.hpp"
#include "halvermonte/Values.hpp"

#include <langinfo.h>
#include <libintl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "platform/portable/Machine.hpp"

namespace halvermonte {

namespace foundation {

Text localizedHostName() {
  const std::optional<std::string> name = Machine::current().localizedHostName();
  return name ? Text(*name) : Text();
}

Date currentDate() { return Date(Machine::current().clock()); }

std::string bundleText(const char* key) {
  const char* const translated = gettext(key);
  if (translated == key) return key;
  // gettext gives text in the locale's charset unless the host has bound another one. For any but
  // UTF-8 it is asked again, and the host's own later calls get what they got before.
  const char* const domain = textdomain(nullptr);
  const char* const bound = bind_textdomain_codeset(domain, nullptr);
  const std::string hosts = bound != nullptr ? bound : nl_langinfo(CODESET);
  if (hosts == "UTF-8") return translated;
  bind_textdomain_codeset(domain, "UTF-8");
  std::string text = gettext(key);
  bind_textdomain_codeset(domain, hosts.c_str());
  return text;
}

std::string formatted(const std::string& format, const std::string& argument) {
  static constexpr std::string_view kPlace = "%@";
  const size_t place = format.find(kPlace);
  if (place == std::string::npos) return format;
  return format.substr(0, place) + argument + format.substr(place + kPlace.size());
}

std::optional<std::string> outputOfCommand(const std::string& command) {
  return Machine::current().outputOfCommand(command);
}

void log(std::string_view line) {
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(now);
  const auto sinceEpoch =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%Y-%m-%d %H:%M:%S", &local);
  std::fprintf(stderr, "%s.%03d %s[%d] %.*s\n", date.data(),
               static_cast<int>(sinceEpoch.count() % 1000), program_invocation_short_name, getpid(),
               static_cast<int>(line.size()), line.data());
}

std::optional<std::string> reasonRaisedBy(const std::function<void()>& call) {
  try {
    call();
    return std::nullopt;
  } catch (const PlatformException& exception) {
    return exception.reason();
  }
}

}  // namespace foundation
}  // namespace halvermonte
