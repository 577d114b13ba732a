#include "monitor/Options.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <string_view>
#include <system_error>

#include "halvermonte/Version.h"
#include "monitor/ListenAddress.hpp"

namespace halvermonte {

namespace {

constexpr char kHelp[] =
    R"(usage: halvermonte-monitor [OPTION]...
Shows temperatures, fans and disk traffic, of this computer or a simulated one.

  -m, --machine WHICH     "host" (this computer, the default), a simulated
                          computer's NAME, a machine FILE, or "list"
  -f, --format FORMAT     text, or json (--json): the record, one line per pass
  -n, --ticks N           number of reports or lines; default 1
  -i, --interval SECONDS  between passes; default 1, and no disk rates below
      --live              show the sensors live at a terminal; ? lists keys
      --watch             the same at a terminal; else reports until Ctrl-C
      --fahrenheit; --color WHEN  degrees in text; auto, always or never
      --pid PID           show a process's current CPU use; 100 = one core
      --list              list every sensor with its reading and its source
      --record FILE       write N passes to a machine file, or "-"; the host's
                          name is in it only if --with-host-name is given
      --listen [HOST:]PORT  serve passes over HTTP, at 127.0.0.1 unless named
      --tls-certificate FILE, --tls-key FILE  serve by HTTPS
      --users FILE        serve users of an htpasswd file (bcrypt) alone
      --drive-temperatures  read drives too, which may keep them spinning
      --sys DIR, --proc DIR  folders to read in place of /sys and /proc
  -h, --help; --version   show this text; show the versions
examples:
  halvermonte-monitor --live
  halvermonte-monitor -m M1 --json -n 3 -i 0 | jq .record.sensors
)";

std::string versions() {
  char engine[32];
  std::snprintf(engine, sizeof engine, "%.0f", HalvermonteSensorsEngineVersionNumber);
  return "halvermonte-monitor " HALVERMONTE_VERSION "\nengine " + std::string(engine) +
         "\nmachine " HALVERMONTE_SYSTEM "\nlibplist " HALVERMONTE_LIBPLIST_VERSION "\n";
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

std::optional<Colours> colours(const std::string& text) {
  if (text == "auto") return Colours::ofTerminal;
  if (text == "always") return Colours::always;
  if (text == "never") return Colours::never;
  return std::nullopt;
}

/// An option that follows is not a name: "--record --json" would write a file.
std::optional<std::string> name(const std::string& text) {
  return text.empty() || text.starts_with("--") ? std::nullopt : std::optional(text);
}

const std::string kNotWith = "cannot be combined with ";

struct Pair {
  const char* option;
  const char* other;
};

/// Options that exclude each other.
constexpr Pair kExclusive[] = {
    {"--list", "--record"},  {"--list", "--watch"},    {"--record", "--watch"},
    {"--live", "--json"},    {"--live", "--list"},     {"--live", "--record"},
    {"--listen", "--json"},  {"--listen", "--format"}, {"--listen", "--ticks"},
    {"--listen", "--watch"}, {"--listen", "--live"},   {"--listen", "--fahrenheit"},
    {"--listen", "--pid"},   {"--listen", "--list"},   {"--listen", "--record"},
};

/// Options that say nothing without another.
constexpr Pair kNeeds[] = {
    {"--with-host-name", "--record"},   {"--tls-certificate", "--listen"},
    {"--tls-key", "--listen"},          {"--users", "--listen"},
    {"--tls-certificate", "--tls-key"}, {"--tls-key", "--tls-certificate"},
};

constexpr const char* kOfThisComputer[] = {"--sys", "--proc", "--drive-temperatures"};

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
  throw CLI::ValidationError(name, reason);
}

/// Reads every value as a text, so that each complaint is one of ours.
class CommandLine {
 public:
  CommandLine() {
    app_.set_help_flag("-h,--help")->disable_flag_override();
    app_.set_version_flag("--version", versions());
    option("-m,--machine", options_.machine, name, "a computer's name or a file's");
    option("-f,--format", format_, format, "text or json");
    flag("--json", json_);
    option("-n,--ticks", ticks_, positiveInteger<uint64_t>, "a positive integer");
    option("-i,--interval", options_.interval, seconds, "seconds from 0 to 1000000");
    flag("--watch", options_.watch);
    flag("--live", options_.live);
    flag("--fahrenheit", options_.fahrenheit);
    option("--color", options_.colours, colours, "auto, always or never");
    option("--pid", options_.process, positiveInteger<int32_t>, "a process identifier");
    flag("--list", options_.list);
    option("--record", options_.recordingPath, name, "a file's name");
    flag("--with-host-name", options_.withHostName);
    option("--listen", options_.listen, listenAddress, "[HOST:]PORT, the port from 0 to 65535");
    option("--tls-certificate", options_.tlsCertificate, name, "a file's name");
    option("--tls-key", options_.tlsKey, name, "a file's name");
    option("--users", options_.users, name, "a file's name");
    flag("--drive-temperatures", options_.driveTemperatures);
    option("--sys", options_.sys, name, "a folder's name");
    option("--proc", options_.proc, name, "a folder's name");
  }

  // Throws a CLI::ParseError.
  Options parse(int argc, const char* const* argv) {
    app_.parse(argc, argv);
    expectThatTheyFit();
    expectMachineThatFits();
    options_.format = json_ ? Format::json : format_.value_or(Format::text);
    options_.ticks = ticks_.value_or(options_.runsOn() ? Options::kEndless : 1);
    return options_;
  }

  /// The line for an error that parse() threw.
  std::string complaint(const CLI::ParseError& error) const {
    if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
      const std::string argument = app_.remaining().front();
      return (argument.starts_with('-') ? "unknown option \"" : "unexpected argument \"") +
             argument + "\"";
    }
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) == nullptr) return error.what();
    const std::string_view text = error.what();  // begins with the option, a flag without dashes
    const std::string option(text.substr(0, text.find_first_of(": ")));
    const auto expected = expected_.find(option);
    if (expected == expected_.end()) return "--" + option + ": takes no value";
    return option + ": needs " + expected->second;
  }

 private:
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
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    expected_[name] = expected;
  }

  bool isGiven(const std::string& name) const { return app_.count(name) > 0; }

  void expectThatTheyFit() const {
    for (const auto& [option, other] : kExclusive) {
      if (isGiven(option) && isGiven(other)) refuse(option, kNotWith + other);
    }
    if (json_ && format_ == Format::text) refuse("--json", kNotWith + "--format text");
    if (options_.live && format_ == Format::json) refuse("--live", kNotWith + "--format json");
    for (const auto& [option, other] : kNeeds) {
      if (isGiven(option) && !isGiven(other)) refuse(option, std::string("needs ") + other);
    }
    if (options_.listen && options_.interval == 0) refuse("--listen", "needs an interval above 0");
    if (options_.recordsOnStandardOutput() && (json_ || format_ == Format::json)) {
      refuse("--record " + *options_.recordingPath,
             kNotWith + "JSON lines, which go to standard output too");
    }
  }

  void expectMachineThatFits() const {
    if (options_.machine == "host") return;
    for (const CLI::Option* option : app_.get_options()) {
      const std::string name = option->get_name();
      if (option->count() > 0 && options_.machine == "list" && name != "--machine") {
        refuse("--machine list", kNotWith + name);
      }
    }
    for (const char* option : kOfThisComputer) {
      if (isGiven(option)) refuse(option, "needs --machine host");
    }
  }

  CLI::App app_;
  std::map<std::string, std::string> expected_;  ///< what an option's value has to be
  Options options_;
  std::optional<Format> format_;
  std::optional<uint64_t> ticks_;
  bool json_ = false;
};

}  // namespace

bool Options::runsOn() const { return watch || live || listen; }

bool Options::recordsOnStandardOutput() const {
  constexpr std::string_view kNames[] = {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"};
  return recordingPath && std::ranges::find(kNames, *recordingPath) != std::end(kNames);
}

std::variant<Options, EarlyExit> parseOptions(int argc, const char* const* argv) {
  CommandLine line;
  try {
    return line.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return EarlyExit{kHelp, ""};
  } catch (const CLI::CallForVersion&) {
    return EarlyExit{versions(), ""};
  } catch (const CLI::ParseError& error) {
    return EarlyExit{"", line.complaint(error) + " (see --help)"};
  }
}

}  // namespace halvermonte
