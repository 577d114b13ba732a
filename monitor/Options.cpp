#include "monitor/Options.hpp"

#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "halvermonte/Version.h"

namespace halvermonte {

namespace {

constexpr char kHelp[] =
    R"(usage: halvermonte-monitor [OPTION]...
Shows temperatures, fans and disk traffic, of this computer or a simulated one.

  -m, --machine WHICH     "host" (this computer), a bundled machine's NAME, a
                          machine FILE, or "list"; default: this computer, or
                          the bundled M1 if this one offers nothing to read
  -f, --format FORMAT     text, or json: the whole record, one line per pass
      --json              the same as --format json
  -n, --ticks N           number of reports or lines; default 1
  -i, --interval SECONDS  time between passes; default 1, and disks have no
                          rates below that
      --watch             run until Ctrl-C; at a terminal, redraw in place
      --fahrenheit        show degrees Fahrenheit in text
      --pid PID           show a process's current CPU use; 100 = one core
      --list              list every sensor: key, name, source and reading
      --record FILE       write N passes to a machine file, with the host's
                          name only if --with-host-name is given
      --drive-temperatures  read drives too, which may keep them spinning
      --sys DIR, --proc DIR  folders to read in place of /sys and /proc
  -h, --help; --version   show this text; show the versions

examples:
  halvermonte-monitor --watch
  halvermonte-monitor -m M1 --json -n 3 -i 0 | jq .record.sensors
)";

std::string versions() {
  char engine[32];
  std::snprintf(engine, sizeof engine, "%.0f", HalvermonteSensorsEngineVersionNumber);
  return "halvermonte-monitor " HALVERMONTE_VERSION "\nengine " + std::string(engine) + "\n";
}

template <class Integer>
std::optional<Integer> positiveInteger(const std::string& text) {
  Integer number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < 1) return std::nullopt;
  return number;
}

std::optional<double> seconds(const std::string& text) {
  constexpr double kMost = 1e6;
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != text.npos) return std::nullopt;
  char* stop = nullptr;
  const double number = std::strtod(text.c_str(), &stop);
  if (*stop != '\0' || !(number >= 0 && number <= kMost)) return std::nullopt;
  return number;
}

std::optional<Format> format(const std::string& text) {
  if (text == "text") return Format::text;
  if (text == "json") return Format::json;
  return std::nullopt;
}

std::optional<std::string> any(const std::string& text) { return text; }

std::optional<std::string> path(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

class CommandLine {
 public:
  CommandLine() {
    app_.set_help_flag("-h,--help");
    app_.set_version_flag("--version", versions());
    option("-m,--machine", options_.machine, any, "");
    option("-f,--format", format_, format, "text or json");
    flag("--json", json_);
    option("-n,--ticks", ticks_, positiveInteger<uint64_t>, "a positive integer");
    option("-i,--interval", options_.interval, seconds, "seconds from 0 to 1000000");
    flag("--watch", options_.watch);
    flag("--fahrenheit", options_.fahrenheit);
    option("--pid", options_.process, positiveInteger<int32_t>, "a process identifier");
    flag("--list", options_.list);
    option("--record", options_.recordingPath, path, "a file's name");
    flag("--with-host-name", options_.withHostName);
    flag("--drive-temperatures", options_.driveTemperatures);
    option("--sys", options_.sys, path, "a folder's name");
    option("--proc", options_.proc, path, "a folder's name");
  }

  // Throws a CLI::ParseError.
  Options parse(int argc, const char* const* argv) {
    app_.parse(argc, argv);
    if (json_ && format_ == Format::text) refuse("--json", "cannot be combined with --format text");
    if (options_.sys || options_.proc) expectThisComputer();
    if (options_.process && !options_.machine) options_.machine = "host";
    if (options_.list && options_.recordingPath)
      refuse("--list", "cannot be combined with --record");
    if (options_.recordingPath && options_.watch)
      refuse("--record", "cannot be combined with --watch");
    if (options_.withHostName && !options_.recordingPath) {
      refuse("--with-host-name", "needs --record");
    }
    options_.format = json_ ? Format::json : format_.value_or(Format::text);
    options_.ticks = ticks_.value_or(options_.watch ? Options::kEndless : 1);
    return options_;
  }

 private:
  [[noreturn]] static void refuse(const std::string& name, const std::string& reason) {
    throw CLI::ValidationError(name, reason);
  }

  void expectThisComputer() {
    if (!options_.machine) options_.machine = "host";
    if (options_.machine != "host")
      refuse(options_.sys ? "--sys" : "--proc", "needs --machine host");
  }

  void flag(const char* name, bool& target) {
    app_.add_flag(name, target)->disable_flag_override();
  }

  // If an option is given twice, the last one counts.
  template <class Target, class Conversion>
  void option(const char* names, Target& target, Conversion conversion, const char* expected) {
    const std::string name = std::string(names).substr(std::string_view(names).find("--"));
    const auto convert = [=, &target](const std::string& text) {
      const auto value = conversion(text);
      if (!value) refuse(name, std::string("expected ") + expected + ", not \"" + text + "\"");
      target = *value;
    };
    app_.add_option_function<std::string>(names, convert)
        ->type_name("value")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  }

  CLI::App app_;
  Options options_;
  std::optional<Format> format_;
  std::optional<uint64_t> ticks_;
  bool json_ = false;
};

}  // namespace

std::variant<Options, EarlyExit> parseOptions(int argc, const char* const* argv) {
  try {
    return CommandLine().parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return EarlyExit{kHelp, ""};
  } catch (const CLI::CallForVersion&) {
    return EarlyExit{versions(), ""};
  } catch (const CLI::ParseError& error) {
    return EarlyExit{"", std::string(error.what()) + " (see --help)"};
  }
}

}  // namespace halvermonte
