// The command line.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>

namespace halvermonte {

enum class Format { text, json };

struct Options {
  /// Ticks without end.
  static constexpr uint64_t kEndless = std::numeric_limits<uint64_t>::max();

  std::optional<std::string> machine;  ///< "host", "list", a bundled machine's name or a file
  Format format = Format::text;
  uint64_t ticks = 1;   ///< number of reports or lines
  double interval = 1;  ///< seconds between passes
  bool watch = false;
  bool fahrenheit = false;
  std::optional<int32_t> process;
  bool list = false;                         ///< list the sensors in place of reports
  std::optional<std::string> recordingPath;  ///< the machine file to write
  bool withHostName = false;                 ///< in a recording of this computer
  bool driveTemperatures = false;
  std::optional<std::string> sys;   ///< in place of /sys
  std::optional<std::string> proc;  ///< in place of /proc
};

/// A command line that leaves nothing to do but print: on standard output or, if it is wrong use, a
/// line on standard error.
struct EarlyExit {
  std::string output;
  std::string complaint;
};

/// REQUIRES: the arguments of main.
std::variant<Options, EarlyExit> parseOptions(int argc, const char* const* argv);

}  // namespace halvermonte
