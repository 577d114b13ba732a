#include "monitor/Options.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::StartsWith;

std::variant<Options, EarlyExit> parsed(std::initializer_list<const char*> arguments) {
  std::vector<const char*> argv = {"halvermonte-monitor"};
  argv.insert(argv.end(), arguments);
  return parseOptions(static_cast<int>(argv.size()), argv.data());
}

Options options(std::initializer_list<const char*> arguments) {
  const auto result = parsed(arguments);
  if (const auto* exit = std::get_if<EarlyExit>(&result)) ADD_FAILURE() << exit->complaint;
  return std::holds_alternative<Options>(result) ? std::get<Options>(result) : Options();
}

std::string complaint(std::initializer_list<const char*> arguments) {
  const auto result = parsed(arguments);
  return std::holds_alternative<EarlyExit>(result) ? std::get<EarlyExit>(result).complaint
                                                   : "(none)";
}

TEST(Options, DefaultIsOneTextReportASecondLater) {
  const Options use = options({});
  EXPECT_EQ(use.machine, std::nullopt);
  EXPECT_EQ(use.format, Format::text);
  EXPECT_EQ(use.ticks, 1U);
  EXPECT_EQ(use.interval, 1);
  EXPECT_FALSE(use.watch);
  EXPECT_FALSE(use.fahrenheit);
  EXPECT_EQ(use.process, std::nullopt);
  EXPECT_EQ(use.sys, std::nullopt);
  EXPECT_EQ(use.proc, std::nullopt);
}

TEST(Options, ShortAndLongFormsAreTheSame) {
  for (const Options& use :
       {options({"-m", "M1", "-f", "json", "-n", "3", "-i", "0.5"}),
        options({"--machine=M1", "--format=json", "--ticks=3", "--interval=.5"}),
        options({"-mM1", "--json", "-n3", "-i5e-1"})}) {
    EXPECT_THAT(use.machine, Optional(std::string("M1")));
    EXPECT_EQ(use.format, Format::json);
    EXPECT_EQ(use.ticks, 3U);
    EXPECT_EQ(use.interval, 0.5);
  }
}

TEST(Options, WatchHasNoEndUnlessTicksGiveOne) {
  EXPECT_EQ(options({"--watch"}).ticks, Options::kEndless);
  EXPECT_EQ(options({"--watch", "--ticks", "4"}).ticks, 4U);
  EXPECT_EQ(options({"--watch", "--json"}).format, Format::json);
}

TEST(Options, LastOfTwoCounts) { EXPECT_EQ(options({"-n", "2", "-n", "5"}).ticks, 5U); }

TEST(Options, OtherFoldersMeanThisComputer) {
  EXPECT_THAT(options({"--sys", "/tmp/sys"}).machine, Optional(std::string("host")));
  EXPECT_THAT(options({"--sys", "/tmp/sys", "--proc", "/tmp/proc"}).proc,
              Optional(std::string("/tmp/proc")));
  EXPECT_THAT(complaint({"--proc", "/tmp", "-m", "M1"}), StartsWith("--proc: "));
}

TEST(Options, ProcessIsOneOfThisComputerUnlessAMachineIsNamed) {
  EXPECT_THAT(options({"--pid", "1"}).process, Optional(1));
  EXPECT_THAT(options({"--pid", "1"}).machine, Optional(std::string("host")));
  EXPECT_THAT(options({"--pid", "1", "-m", "M1"}).machine, Optional(std::string("M1")));
}

TEST(Options, BadValuesAreOneLineThatNamesTheOptionAndTheExpectation) {
  for (const char* value : {"0", "-1", "1.5", "x", "", "3x", "18446744073709551616"}) {
    EXPECT_EQ(complaint({"--ticks", value}), "--ticks: expected a positive integer, not \"" +
                                                 std::string(value) + "\" (see --help)");
  }
  for (const char* value : {"-1", "nan", "inf", "1e400", "1,5", "0x10", "", "1s", "1000000.5"}) {
    EXPECT_THAT(complaint({"--interval", value}),
                StartsWith("--interval: expected seconds from 0 to 1000000, not"));
  }
  EXPECT_THAT(complaint({"--format", "xml"}), StartsWith("--format: expected text or json, not"));
  EXPECT_THAT(complaint({"--pid", "0"}), StartsWith("--pid: expected a process identifier, not"));
  EXPECT_THAT(complaint({"--record", ""}), StartsWith("--record: expected a file's name, not"));
  EXPECT_THAT(complaint({"--sys", ""}), StartsWith("--sys: expected a folder's name, not"));
  EXPECT_THAT(complaint({"--proc", ""}), StartsWith("--proc: expected a folder's name, not"));
}

TEST(Options, WrongUsePointsToHelp) {
  EXPECT_THAT(complaint({"--bogus"}), AllOf(HasSubstr("--bogus"), EndsWith("(see --help)")));
  EXPECT_THAT(complaint({"extra"}), HasSubstr("extra"));
  EXPECT_THAT(complaint({"--ticks"}), StartsWith("--ticks: "));
  EXPECT_THAT(complaint({"--json", "--format", "text"}), StartsWith("--json: "));
}

TEST(Options, HelpFitsASmallTerminalAndNamesEachOption) {
  const std::string help = std::get<EarlyExit>(parsed({"--help"})).output;
  EXPECT_THAT(std::get<EarlyExit>(parsed({"-h"})).complaint, IsEmpty());
  EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24);
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
  for (const char* option :
       {"-m, --machine", "-f, --format", "--json", "-n, --ticks", "--watch", "-i, --interval",
        "--fahrenheit", "--pid", "--list", "--record", "--with-host-name", "--drive-temperatures",
        "--sys", "--proc", "--version", "-h, --help"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

TEST(Options, VersionNamesMonitorAndEngine) {
  const EarlyExit exit = std::get<EarlyExit>(parsed({"--version"}));
  EXPECT_THAT(exit.output, StartsWith("halvermonte-monitor "));
  EXPECT_THAT(exit.output, EndsWith("\nengine 202112300\n"));
  EXPECT_THAT(exit.complaint, IsEmpty());
}

}  // namespace
}  // namespace halvermonte
