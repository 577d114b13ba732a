#include "monitor/Options.hpp"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <string_view>
#include <system_error>
#include <vector>

#include "halvermonte/Version.h"

namespace halvermonte {

namespace {

constexpr char kHelp[] =
    R"(usage: halvermonte-monitor [OPTION]...
Shows temperatures, fans and disk traffic, of this computer or a simulated one.

  -m, --machine WHICH     "host" (this computer, the default), a simulated
                          computer's NAME, a machine FILE, or "list"
  -f, --format FORMAT     text, or json: the whole record, one line per pass
      --json              the same as --format json
  -n, --ticks N           number of reports or lines; default 1
  -i, --interval SECONDS  time between passes; default 1, and disks have no
                          rates below that
      --watch             run until Ctrl-C; at a terminal, redraw in place
      --fahrenheit        show degrees Fahrenheit in text
      --color WHEN        auto, always or never
      --pid PID           show a process's current CPU use; 100 = one core
      --list              list every sensor: key, name, source and reading
      --record FILE       write N passes to a machine file, or "-"; the host's
                          name is in it only if --with-host-name is given
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
  return "halvermonte-monitor " HALVERMONTE_VERSION "\nengine " + std::string(engine) +
         "\nmachine " HALVERMONTE_SYSTEM "\nlibplist " HALVERMONTE_LIBPLIST_VERSION "\n";
}

/// The line of a wrong use.
struct WrongUse {
  std::string line;
};

[[noreturn]] void refuse(std::string_view option, const std::string& reason) {
  throw WrongUse{std::string(option) + ": " + reason};
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

std::optional<std::string> name(const std::string& text) {
  return text.empty() ? std::nullopt : std::optional(text);
}

const std::string kNotWith = "cannot be combined with ";

/// Options that exclude each other.
struct Exclusion {
  std::string_view option, other;
};
constexpr Exclusion kExclusive[] = {
    {"--list", "--record"},
    {"--list", "--watch"},
    {"--record", "--watch"},
};

constexpr std::string_view kOfThisComputer[] = {"--sys", "--proc", "--drive-temperatures"};

class CommandLine {
 public:
  CommandLine() {
    option("--machine", "-m", options_.machine, name, "a computer's name or a file's");
    option("--format", "-f", format_, format, "text or json");
    flag("--json", json_);
    option("--ticks", "-n", ticks_, positiveInteger<uint64_t>, "a positive integer");
    option("--interval", "-i", options_.interval, seconds, "seconds from 0 to 1000000");
    flag("--watch", options_.watch);
    flag("--fahrenheit", options_.fahrenheit);
    option("--color", "", options_.colours, colours, "auto, always or never");
    option("--pid", "", options_.process, positiveInteger<int32_t>, "a process identifier");
    flag("--list", options_.list);
    option("--record", "", options_.recordingPath, name, "a file's name");
    flag("--with-host-name", options_.withHostName);
    flag("--drive-temperatures", options_.driveTemperatures);
    option("--sys", "", options_.sys, name, "a folder's name");
    option("--proc", "", options_.proc, name, "a folder's name");
    flag("--help", help_, "-h");
    flag("--version", version_);
  }

  std::variant<Options, EarlyExit> parse(const std::vector<std::string>& arguments) {
    for (next_ = arguments.begin(); next_ != arguments.end();) {
      take(*next_++, arguments.end());
      if (help_) return EarlyExit{kHelp, ""};
      if (version_) return EarlyExit{versions(), ""};
    }
    expectThatTheyFit();
    expectMachineThatFits();
    options_.format = json_ ? Format::json : format_.value_or(Format::text);
    options_.ticks = ticks_.value_or(options_.watch ? Options::kEndless : 1);
    return options_;
  }

 private:
  using Arguments = std::vector<std::string>::const_iterator;

  struct Option {
    std::string_view name, letter;
    std::string_view expected;  ///< of the value; "" if it takes none
    std::function<bool(const std::string&)> store;
    bool isGiven = false;
  };

  void flag(std::string_view name, bool& target, std::string_view letter = "") {
    known_.push_back({name, letter, "", [&target](const std::string&) { return target = true; }});
  }

  // If an option is given twice, the last one counts.
  template <class Target, class Conversion>
  void option(std::string_view name, std::string_view letter, Target& target, Conversion conversion,
              std::string_view expected) {
    known_.push_back({name, letter, expected, [conversion, &target](const std::string& text) {
                        const auto value = conversion(text);
                        if (value) target = *value;
                        return value.has_value();
                      }});
  }

  /// Takes an argument and, if it is an option whose value follows, the next one.
  void take(const std::string& argument, Arguments end) {
    if (!argument.starts_with('-')) throw WrongUse{"unexpected argument \"" + argument + "\""};
    const bool isLong = argument.starts_with("--");
    const size_t nameEnd = isLong ? std::min(argument.find('='), argument.size()) : 2;
    Option& option = find(argument, argument.substr(0, nameEnd));
    const bool hasValue = argument.size() > nameEnd;
    if (option.expected.empty()) {
      if (hasValue) refuse(option.name, "takes no value");
      store(option, "");
    } else if (hasValue) {
      store(option, argument.substr(isLong ? nameEnd + 1 : nameEnd));
    } else if (next_ != end) {
      store(option, *next_++);
    } else {
      refuse(option.name, "needs " + std::string(option.expected));
    }
  }

  Option& find(const std::string& argument, std::string_view name) {
    const auto option = std::ranges::find_if(
        known_, [name](const Option& each) { return name == each.name || name == each.letter; });
    if (option == known_.end()) throw WrongUse{"unknown option \"" + argument + "\""};
    return *option;
  }

  static void store(Option& option, const std::string& value) {
    option.isGiven = true;
    if (option.store(value)) return;
    refuse(option.name, "expected " + std::string(option.expected) + ", not \"" + value + "\"");
  }

  bool isGiven(std::string_view name) const {
    return std::ranges::any_of(
        known_, [name](const Option& option) { return option.isGiven && option.name == name; });
  }

  void expectThatTheyFit() const {
    for (const auto& [option, other] : kExclusive) {
      if (isGiven(option) && isGiven(other)) refuse(option, kNotWith + std::string(other));
    }
    if (json_ && format_ == Format::text) refuse("--json", kNotWith + "--format text");
    if (options_.withHostName && !options_.recordingPath) {
      refuse("--with-host-name", "needs --record");
    }
    if (options_.recordsOnStandardOutput() && (json_ || format_ == Format::json)) {
      refuse("--record " + *options_.recordingPath,
             kNotWith + "JSON lines, which go to standard output too");
    }
  }

  void expectMachineThatFits() const {
    if (options_.machine == "host") return;
    for (const Option& option : known_) {
      if (option.isGiven && options_.machine == "list" && option.name != "--machine") {
        refuse("--machine list", kNotWith + std::string(option.name));
      }
    }
    for (const std::string_view option : kOfThisComputer) {
      if (isGiven(option)) refuse(option, "needs --machine host");
    }
  }

  std::vector<Option> known_;
  Arguments next_;
  Options options_;
  std::optional<Format> format_;
  std::optional<uint64_t> ticks_;
  bool json_ = false, help_ = false, version_ = false;
};

}  // namespace

bool Options::recordsOnStandardOutput() const {
  constexpr std::string_view kNames[] = {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"};
  return recordingPath && std::ranges::find(kNames, *recordingPath) != std::end(kNames);
}

std::variant<Options, EarlyExit> parseOptions(int argc, const char* const* argv) {
  try {
    return CommandLine().parse({argv + std::min(argc, 1), argv + argc});
  } catch (const WrongUse& use) {
    return EarlyExit{"", use.line + " (see --help)"};
  }
}

}  // namespace halvermonte
