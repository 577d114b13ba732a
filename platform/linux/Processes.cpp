#include "platform/linux/Processes.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/linux/Files.hpp"
#include "platform/linux/Text.hpp"

namespace halvermonte::linuxos {
namespace {

/// Places in the line, as proc(5) numbers them. The identifier and the name are 1 and 2.
enum Place : size_t { kState = 3, kUserTicks = 14, kSystemTicks = 15, kThreads = 20, kStart = 22 };

/// The fields that follow the name. The name is in parentheses, and may itself contain blanks and
/// parentheses.
std::vector<std::string_view> fieldsAfterName(std::string_view line) {
  const size_t nameEnd = line.rfind(')');
  return nameEnd == line.npos ? std::vector<std::string_view>() : words(line.substr(nameEnd + 1));
}

/// Absent if the line is garbled.
std::optional<Process> processIn(std::string_view line) {
  const std::vector<std::string_view> fields = fieldsAfterName(line);
  if (fields.size() <= kStart - kState) return std::nullopt;
  const auto number = [&fields](Place place) { return unsignedInteger(fields[place - kState]); };
  const auto user = number(kUserTicks), system = number(kSystemTicks);
  const auto threads = number(kThreads), start = number(kStart);
  if (!user || !system || !threads || !start) return std::nullopt;
  // The state is that of the first thread. The process goes on if others are left.
  const std::string_view state = fields.front();
  if ((state == "Z" || state == "X") && *threads <= 1) return NoProcess{};
  const auto ticksPerSecond = static_cast<double>(sysconf(_SC_CLK_TCK));
  return ProcessTimes{.cpuSeconds = static_cast<double>(*user + *system) / ticksPerSecond,
                      .start = *start};
}

}  // namespace

Process readProcess(SystemCalls& calls, const std::string& proc, int32_t identifier) {
  const std::string path = proc + "/" + std::to_string(identifier) + "/stat";
  const std::optional<std::string> line = textOf(calls, path);
  // A process that ends between the opening of its file and the read fails the read with ESRCH.
  if (!line && (errno == ENOENT || errno == ESRCH)) return NoProcess{};
  if (!line) return UnreadableProcess{std::strerror(errno)};
  return processIn(*line).value_or(UnreadableProcess{path + " is garbled"});
}

}  // namespace halvermonte::linuxos
