#include "platform/Foundation.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "halvermonte/Exceptions.hpp"
#include "halvermonte/Machine.hpp"
#include "halvermonte/UTF8.hpp"
#include "halvermonte/Values.hpp"
#include "platform/AnsweredBy.hpp"
#include "platform/portable/KeptLines.hpp"

namespace halvermonte {

namespace {

const char* programName() {
#ifdef __APPLE__
  return getprogname();
#else
  return program_invocation_short_name;
#endif
}

}  // namespace

namespace foundation {
inline namespace HALVERMONTE_PLATFORM {

Text localizedHostName() {
  const std::optional<std::string> name = Machine::current().localizedHostName();
  return name ? Text(*name) : Text();
}

Date currentDate() { return Date(Machine::current().clock()); }

std::string formatted(const std::string& format, const std::string& argument) {
  static constexpr std::string_view kPlace = "%@";
  const size_t place = format.find(kPlace);
  if (place == std::string::npos) return format;
  return format.substr(0, place) + argument + format.substr(place + kPlace.size());
}

std::optional<std::string> outputOfCommand(const std::string& command) {
  return Machine::current().outputOfCommand(command);
}

void print(const std::string& line) {
  if (!KeptLines::keep(line)) std::puts(line.c_str());
}

void log(std::string_view line) {
  if (KeptLines::keep(line)) return;
  const std::string shown = printableText(line);  // a reason may come from anywhere
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(now);
  const auto sinceEpoch =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%Y-%m-%d %H:%M:%S", &local);
  std::fprintf(stderr, "%s.%03d %s[%d] %s\n", date.data(),
               static_cast<int>(sinceEpoch.count() % 1000), programName(), getpid(), shown.c_str());
}

std::optional<std::string> reasonRaisedBy(const std::function<void()>& call) {
  try {
    call();
    return std::nullopt;
  } catch (const PlatformException& exception) {
    return exception.reason();
  }
}

}  // namespace HALVERMONTE_PLATFORM
}  // namespace foundation
}  // namespace halvermonte
