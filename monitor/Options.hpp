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
  /// Reports or lines without end.
  static constexpr uint64_t kEndless = std::numeric_limits<uint64_t>::max();

  std::optional<std::string> machine;  ///< "host", "list", a bundled machine's name or a file;
                                       ///< absent: not asked for
  Format format = Format::text;
  uint64_t ticks = 1;   ///< reports or lines to print
  double interval = 1;  ///< seconds between passes
  bool watch = false;
  bool fahrenheit = false;
  std::optional<int32_t> process;
  bool list = false;                         ///< every sensor, in place of reports
  std::optional<std::string> recordingPath;  ///< the machine file to write
  bool withHostName = false;                 ///< into a recording of this computer
  bool driveTemperatures = false;
  std::optional<std::string> sys;   ///< in place of /sys
  std::optional<std::string> proc;  ///< in place of /proc
};

/// A command line that asks for no work: what to print on standard output and, where it is wrong
/// use, the line for standard error.
struct EarlyExit {
  std::string output;
  std::string complaint;
};

/// REQUIRES: as main has them.
std::variant<Options, EarlyExit> parseOptions(int argc, const char* const* argv);

}  // namespace halvermonte
