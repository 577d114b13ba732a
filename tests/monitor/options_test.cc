#include "monitor/Options.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::StartsWith;

std::variant<Options, EarlyExit> parsed(std::vector<const char*> argv) {
  argv.insert(argv.begin(), "halvermonte-monitor");
  return parseOptions(static_cast<int>(argv.size()), argv.data());
}

Options options(const std::vector<const char*>& arguments) {
  const auto result = parsed(arguments);
  if (const auto* exit = std::get_if<EarlyExit>(&result)) ADD_FAILURE() << exit->complaint;
  return std::holds_alternative<Options>(result) ? std::get<Options>(result) : Options();
}

std::string complaint(const std::vector<const char*>& arguments) {
  const auto result = parsed(arguments);
  return std::holds_alternative<EarlyExit>(result) ? std::get<EarlyExit>(result).complaint
                                                   : "(none)";
}

TEST(Options, DefaultIsOneTextReportASecondLater) {
  const Options use = options({});
  EXPECT_EQ(use.machine, "host");
  EXPECT_EQ(use.format, Format::text);
  EXPECT_EQ(use.ticks, 1U);
  EXPECT_EQ(use.interval, 1);
  EXPECT_FALSE(use.watch);
  EXPECT_FALSE(use.fahrenheit);
  EXPECT_EQ(use.process, std::nullopt);
  EXPECT_EQ(use.sys, std::nullopt);
  EXPECT_EQ(use.proc, std::nullopt);
  EXPECT_EQ(use.colours, Colours::ofTerminal);
}

TEST(Options, ShortAndLongFormsAreTheSame) {
  for (const Options& use :
       {options({"-m", "M1", "-f", "json", "-n", "3", "-i", "0.5"}),
        options({"--machine=M1", "--format=json", "--ticks=3", "--interval=.5"}),
        options({"-mM1", "--json", "-n3", "-i5e-1"})}) {
    EXPECT_EQ(use.machine, "M1");
    EXPECT_EQ(use.format, Format::json);
    EXPECT_EQ(use.ticks, 3U);
    EXPECT_EQ(use.interval, 0.5);
  }
}

TEST(Options, WatchHasNoEndUnlessTicksGiveOne) {
  EXPECT_EQ(options({"--watch"}).ticks, Options::kEndless);
  EXPECT_EQ(options({"--watch", "--ticks", "4"}).ticks, 4U);
  EXPECT_EQ(options({"--watch", "--json"}).format, Format::json);
  EXPECT_EQ(options({"--live"}).ticks, Options::kEndless);
  EXPECT_TRUE(options({"--live", "--ticks", "4"}).live);
}

TEST(Options, LastOfTwoCounts) { EXPECT_EQ(options({"-n", "2", "-n", "5"}).ticks, 5U); }

TEST(Options, OtherFoldersAreOfThisComputer) {
  const Options use = options({"--sys", "/tmp/sys", "--proc", "/tmp/proc"});
  EXPECT_EQ(use.machine, "host");
  EXPECT_THAT(use.sys, Optional(std::string("/tmp/sys")));
  EXPECT_THAT(use.proc, Optional(std::string("/tmp/proc")));
}

TEST(Options, ColoursAreAsTheTerminalHasThemUnlessTheUserDecides) {
  EXPECT_EQ(options({"--color", "auto"}).colours, Colours::ofTerminal);
  EXPECT_EQ(options({"--color=always"}).colours, Colours::always);
  EXPECT_EQ(options({"--color=never"}).colours, Colours::never);
}

TEST(Options, StandardOutputHasSeveralNames) {
  for (const char* name : {"-", "/dev/stdout", "/dev/fd/1", "/proc/self/fd/1"}) {
    EXPECT_TRUE(options({"--record", name}).recordsOnStandardOutput()) << name;
  }
  EXPECT_FALSE(options({"--record", "/dev/fd/11"}).recordsOnStandardOutput());
  EXPECT_FALSE(options({}).recordsOnStandardOutput());
}

struct Misuse {
  std::vector<const char*> arguments;
  std::string line;  ///< without the reference to --help
};

const Misuse kMisuses[] = {
    // Arguments that are not options
    {{"--bogus"}, "unknown option \"--bogus\""},
    {{"--bogus=1"}, "unknown option \"--bogus=1\""},
    {{"--tick", "1"}, "unknown option \"--tick\""},
    {{"--ticks:", "1"}, "unknown option \"--ticks:\""},
    {{"-x"}, "unknown option \"-x\""},
    {{"-json"}, "unknown option \"-json\""},
    {{"-"}, "unknown option \"-\""},
    {{"extra"}, "unexpected argument \"extra\""},
    {{""}, "unexpected argument \"\""},
    {{"--machine", "M3", "Max"}, "unexpected argument \"Max\""},
    {{"--watch", "3"}, "unexpected argument \"3\""},
    // Values that are missing, or that an option does not take
    {{"--machine"}, "--machine: needs a computer's name or a file's"},
    {{"-m"}, "--machine: needs a computer's name or a file's"},
    {{"--format"}, "--format: needs text or json"},
    {{"--ticks"}, "--ticks: needs a positive integer"},
    {{"-n"}, "--ticks: needs a positive integer"},
    {{"--interval"}, "--interval: needs seconds from 0 to 1000000"},
    {{"--color"}, "--color: needs auto, always or never"},
    {{"--pid"}, "--pid: needs a process identifier"},
    {{"--record"}, "--record: needs a file's name"},
    {{"--listen"}, "--listen: needs [HOST:]PORT, the port from 0 to 65535"},
    {{"--tls-certificate"}, "--tls-certificate: needs a file's name"},
    {{"--tls-key="}, "--tls-key: needs a file's name"},
    {{"--users"}, "--users: needs a file's name"},
    {{"--sys"}, "--sys: needs a folder's name"},
    {{"--proc"}, "--proc: needs a folder's name"},
    {{"--watch=3"}, "--watch: takes no value"},
    {{"--list=all"}, "--list: takes no value"},
    {{"--help=ticks"}, "--help: takes no value"},
    // Bad values
    {{"--machine", ""}, "--machine: expected a computer's name or a file's, not \"\""},
    {{"--format", "xml"}, "--format: expected text or json, not \"xml\""},
    {{"-fJSON"}, "--format: expected text or json, not \"JSON\""},
    {{"--color", "yes"}, "--color: expected auto, always or never, not \"yes\""},
    {{"--pid", "0"}, "--pid: expected a process identifier, not \"0\""},
    {{"--pid", "2147483648"}, "--pid: expected a process identifier, not \"2147483648\""},
    {{"--record", ""}, "--record: expected a file's name, not \"\""},
    {{"--record", "--json"}, "--record: expected a file's name, not \"--json\""},
    {{"--listen", "here"},
     "--listen: expected [HOST:]PORT, the port from 0 to 65535, not \"here\""},
    {{"--listen", "::1:80"},
     "--listen: expected [HOST:]PORT, the port from 0 to 65535, not \"::1:80\""},
    {{"--listen", "65536"},
     "--listen: expected [HOST:]PORT, the port from 0 to 65535, not \"65536\""},
    {{"--sys", ""}, "--sys: expected a folder's name, not \"\""},
    {{"--proc="}, "--proc: needs a folder's name"},
    {{"--ticks", "--json"}, "--ticks: expected a positive integer, not \"--json\""},
    // Options that do not go together
    {{"--json", "--format", "text"}, "--json: cannot be combined with --format text"},
    {{"--list", "--record", "a"}, "--list: cannot be combined with --record"},
    {{"--watch", "--list"}, "--list: cannot be combined with --watch"},
    {{"--record", "a", "--watch"}, "--record: cannot be combined with --watch"},
    {{"--live", "--json"}, "--live: cannot be combined with --json"},
    {{"-f", "json", "--live"}, "--live: cannot be combined with --format json"},
    {{"--live", "--list"}, "--live: cannot be combined with --list"},
    {{"--live", "--record", "a"}, "--live: cannot be combined with --record"},
    {{"--listen", "0", "--json"}, "--listen: cannot be combined with --json"},
    {{"--listen", "0", "-f", "text"}, "--listen: cannot be combined with --format"},
    {{"--listen", "0", "-n", "2"}, "--listen: cannot be combined with --ticks"},
    {{"--listen", "0", "--watch"}, "--listen: cannot be combined with --watch"},
    {{"--live", "--listen", "0"}, "--listen: cannot be combined with --live"},
    {{"--listen", "0", "--fahrenheit"}, "--listen: cannot be combined with --fahrenheit"},
    {{"--listen", "0", "--pid", "1"}, "--listen: cannot be combined with --pid"},
    {{"--list", "--listen", "0"}, "--listen: cannot be combined with --list"},
    {{"--listen", "0", "--record", "a"}, "--listen: cannot be combined with --record"},
    {{"--listen", "0", "--interval", "0"}, "--listen: needs an interval above 0"},
    {{"--with-host-name"}, "--with-host-name: needs --record"},
    {{"--users", "u"}, "--users: needs --listen"},
    {{"--tls-certificate", "c", "--tls-key", "k"}, "--tls-certificate: needs --listen"},
    {{"--listen", "0", "--tls-certificate", "c"}, "--tls-certificate: needs --tls-key"},
    {{"--listen", "0", "--tls-key", "k"}, "--tls-key: needs --tls-certificate"},
    {{"--record", "-", "--json"},
     "--record -: cannot be combined with JSON lines, which go to standard output too"},
    {{"-f", "json", "--record", "/dev/stdout"},
     "--record /dev/stdout: cannot be combined with JSON lines, which go to standard output too"},
    {{"-m", "M1", "--sys", "/sys"}, "--sys: needs --machine host"},
    {{"-m", "M1", "--proc", "/proc"}, "--proc: needs --machine host"},
    {{"-m", "M1", "--drive-temperatures"}, "--drive-temperatures: needs --machine host"},
    {{"-m", "list", "--json"}, "--machine list: cannot be combined with --json"},
    {{"-n", "1", "-m", "list"}, "--machine list: cannot be combined with --ticks"},
    {{"-m", "list", "--sys", "/sys"}, "--machine list: cannot be combined with --sys"},
};

TEST(Options, EachWrongUseIsOneLineThatPointsToHelp) {
  for (const auto& [arguments, line] : kMisuses) {
    EXPECT_EQ(complaint(arguments), line + " (see --help)");
  }
}

TEST(Options, NumbersAreWholeTextsInTheirRange) {
  for (const char* value : {"0", "-1", "1.5", "x", "", " 3", "3x", "18446744073709551616"}) {
    EXPECT_EQ(complaint({"--ticks", value}), "--ticks: expected a positive integer, not \"" +
                                                 std::string(value) + "\" (see --help)");
  }
  for (const char* value : {"-1", "nan", "inf", "1e400", "1,5", "0x10", "", "1s", "1000000.5"}) {
    EXPECT_EQ(complaint({"--interval", value}),
              "--interval: expected seconds from 0 to 1000000, not \"" + std::string(value) +
                  "\" (see --help)");
  }
}

TEST(Options, HelpIsShownWhateverFollows) {
  EXPECT_THAT(std::get<EarlyExit>(parsed({"--help", "--bogus"})).output, StartsWith("usage: "));
  EXPECT_THAT(std::get<EarlyExit>(parsed({"--json", "--version", "x"})).complaint, IsEmpty());
}

TEST(Options, HelpFitsASmallTerminalAndNamesEachOption) {
  const std::string help = std::get<EarlyExit>(parsed({"--help"})).output;
  EXPECT_THAT(std::get<EarlyExit>(parsed({"-h"})).complaint, IsEmpty());
  EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24);
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
  for (const char* option : {"-m, --machine",
                             "-f, --format",
                             "--json",
                             "-n, --ticks",
                             "--watch",
                             "--live",
                             "-i, --interval",
                             "--fahrenheit",
                             "--color",
                             "--pid",
                             "--list",
                             "--record",
                             "--with-host-name",
                             "--listen",
                             "--tls-certificate",
                             "--tls-key",
                             "--users",
                             "--drive-temperatures",
                             "--sys",
                             "--proc",
                             "--version",
                             "-h, --help"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

TEST(Options, VersionNamesMonitorEngineMachineAndLibraries) {
  const EarlyExit exit = std::get<EarlyExit>(parsed({"--version"}));
  EXPECT_THAT(exit.output, StartsWith("halvermonte-monitor "));
  EXPECT_THAT(exit.output, HasSubstr("\nengine 202112300\nmachine Linux, "));
  EXPECT_THAT(exit.output, ContainsRegex("\nlibplist [0-9.]+\n$"));
  EXPECT_THAT(exit.complaint, IsEmpty());
}

TEST(Options, ListenRunsUntilItIsStopped) {
  const Options use = options({"--listen", "9000"});
  ASSERT_TRUE(use.listen);
  EXPECT_EQ(use.listen->host, "127.0.0.1");
  EXPECT_EQ(use.listen->port, 9000);
  EXPECT_EQ(use.ticks, Options::kEndless);
  EXPECT_EQ(options({"--listen", "[::1]:0"}).listen->host, "::1");
}

}  // namespace
}  // namespace halvermonte
