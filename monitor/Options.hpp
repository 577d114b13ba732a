// The command line.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>

#include "monitor/ListenAddress.hpp"

namespace halvermonte {

enum class Format { text, json };

/// When reports have colours: if the terminal has them and the environment allows them, or as the
/// user decides.
enum class Colours { ofTerminal, always, never };

struct Options {
  /// Ticks without end.
  static constexpr uint64_t kEndless = std::numeric_limits<uint64_t>::max();

  std::string machine = "host";  ///< or "list", a bundled machine's name or a file
  Format format = Format::text;
  uint64_t ticks = 1;   ///< number of reports or lines
  double interval = 1;  ///< seconds between passes
  bool watch = false;
  bool live = false;
  bool fahrenheit = false;
  Colours colours = Colours::ofTerminal;
  std::optional<int32_t> process;
  bool list = false;                         ///< list the sensors in place of reports
  std::optional<std::string> recordingPath;  ///< the machine file to write, or "-"
  bool withHostName = false;                 ///< in a recording of this computer
  std::optional<ListenAddress> listen;       ///< serve passes there in place of printing them
  std::optional<std::string> tlsCertificate, tlsKey;  ///< files: serve by HTTPS
  std::optional<std::string> users;                   ///< an htpasswd file: serve them alone
  bool driveTemperatures = false;
  std::optional<std::string> sys;   ///< in place of /sys
  std::optional<std::string> proc;  ///< in place of /proc

  /// Whether it goes on until somebody stops it, unless the ticks end before.
  bool runsOn() const;
  /// Whether the machine file goes to standard output, whichever of its names the path is.
  bool recordsOnStandardOutput() const;
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
