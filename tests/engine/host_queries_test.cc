// What the engine answers about its host.
#include <gtest/gtest.h>

#include <locale>

#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

constexpr const char* kReportCommand = "system_profiler SPHardwareDataType -xml";

/// A property list of that root.
std::string propertyList(const std::string& root) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + root +
         "</plist>\n";
}

/// A hardware report of these items.
std::string reportOf(const std::string& items) {
  return propertyList(
      "<array><dict><key>_dataType</key><string>SPHardwareDataType</string>"
      "<key>_items</key><array>" +
      items + "</array></dict></array>");
}

std::string item(const std::string& members) { return "<dict>" + members + "</dict>"; }
std::string cpuType(const std::string& value) { return "<key>cpu_type</key>" + value; }
std::string chipType(const std::string& value) { return "<key>chip_type</key>" + value; }

struct Report {
  const char* behaviour;
  std::optional<std::string> output;
  const char* name;
};

class ProcessorName : public testing::TestWithParam<Report> {};

TEST_P(ProcessorName, IsThatOfTheOneItemInTheReport) {
  TestMachine machine;
  machine.commands[kReportCommand] = GetParam().output;
  Sampler sampler(machine);
  const Text name = sampler.engine().askSytemInfoForProcessorName();
  EXPECT_TRUE(name) << GetParam().behaviour;
  EXPECT_EQ(name.view(), GetParam().name) << GetParam().behaviour;
}

const std::string kM1 = "<string>Apple M1</string>";
const std::string kIntel = "<string>Intel Core i5</string>";

INSTANTIATE_TEST_SUITE_P(
    Reports, ProcessorName,
    testing::Values(
        Report{"chip_type alone", reportOf(item(chipType(kM1))), "Apple M1"},
        Report{"cpu_type alone", reportOf(item(cpuType(kIntel))), "Intel Core i5"},
        Report{"cpu_type wins", reportOf(item(chipType(kM1) + cpuType(kIntel))), "Intel Core i5"},
        Report{"an empty cpu_type is a name", reportOf(item(cpuType("<string></string>"))), ""},
        Report{"an empty cpu_type wins",
               reportOf(item(cpuType("<string></string>") + chipType(kM1))), ""},
        Report{"a name beyond ASCII", reportOf(item(chipType("<string>Apple \xC2\xB5</string>"))),
               "Apple \xC2\xB5"},
        Report{"neither", reportOf(item("<key>number_processors</key><string>8</string>")), ""},
        Report{"no item", reportOf(""), ""},
        Report{"two items", reportOf(item(chipType(kM1)) + item(chipType(kM1))), ""},
        Report{"a number for a name", reportOf(item(cpuType("<integer>5</integer>"))), ""},
        Report{"a number for a cpu_type is not passed over",
               reportOf(item(cpuType("<integer>5</integer>") + chipType(kM1))), ""},
        Report{"a date for a name",
               reportOf(item(cpuType("<date>2020-01-01T00:00:00Z</date>") + chipType(kM1))), ""},
        Report{"an item that is a text", reportOf(kM1), ""},
        Report{"items that are no array",
               propertyList("<array><dict><key>_items</key>" + item(chipType(kM1)) +
                            "</dict></array>"),
               ""},
        Report{"no items at all", propertyList("<array><dict></dict></array>"), ""},
        Report{"the second section does not count",
               propertyList("<array><dict></dict><dict><key>_items</key><array>" +
                            item(chipType(kM1)) + "</array></dict></array>"),
               ""},
        Report{"an empty array", propertyList("<array></array>"), ""},
        Report{"an array of texts", propertyList("<array>" + kM1 + "</array>"), ""},
        Report{"a dictionary at the top", propertyList(item(chipType(kM1))), ""},
        Report{"a text at the top", propertyList(kM1), ""},
        Report{"cut short", reportOf(item(chipType(kM1))).substr(0, 120), ""},
        Report{"no property list", "Hardware Overview:\n  Chip: Apple M1\n", ""},
        Report{"bytes that are no text", "\xFF\xFE\x80", ""}, Report{"nothing printed", "", ""},
        Report{"the command does not start", std::nullopt, ""}));

TEST(ProcessorName, IsAskedByTheSystemProfiler) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.asked.clear();
  sampler.engine().askSytemInfoForProcessorName();
  EXPECT_EQ(machine.asked, std::vector<std::string>({kReportCommand}));
}

struct Cores {
  std::optional<int64_t> answer;
  int32_t cores;
};

class PhysicalCores : public testing::TestWithParam<Cores> {};

TEST_P(PhysicalCores, AreTheKernelsNumberAndNever0) {
  TestMachine machine;
  if (GetParam().answer) machine.kernelVariables["hw.physicalcpu"] = *GetParam().answer;
  Sampler sampler(machine);
  machine.asked.clear();
  EXPECT_EQ(sampler.engine().physicalCores(), GetParam().cores);
  EXPECT_EQ(machine.asked, std::vector<std::string>({"hw.physicalcpu"}));
}

INSTANTIATE_TEST_SUITE_P(Answers, PhysicalCores,
                         testing::Values(Cores{8, 8}, Cores{1, 1}, Cores{0, 1},
                                         Cores{std::nullopt, 1}, Cores{1000, 1000}, Cores{-4, -4}));

struct Output {
  const char* behaviour;
  std::optional<std::string> output;
  float percent;
};

class ProcessCPU : public testing::TestWithParam<Output> {};

TEST_P(ProcessCPU, IsTheNumberOfTheSecondLine) {
  TestMachine machine;
  machine.commands["ps -p 123 -o %cpu"] = GetParam().output;
  Sampler sampler(machine);
  EXPECT_EQ(sampler.engine().askSystemPS(123), GetParam().percent) << GetParam().behaviour;
}

INSTANTIATE_TEST_SUITE_P(
    Outputs, ProcessCPU,
    testing::Values(Output{"as ps prints it", "%CPU\n 12.5\n", 12.5F},
                    Output{"without a last line feed", "%CPU\n12.5", 12.5F},
                    Output{"more lines", "%CPU\n  0.3\n 99\n", 0.3F},
                    Output{"more than one core", "%CPU\n312.25\n", 312.25F},
                    Output{"no such process", "%CPU\n", 0.0F},
                    Output{"a line of words", "%CPU\nnone 5\n", 0.0F},
                    Output{"blanks and tabs before", "%CPU\n \t 7.5\n", 7.5F},
                    Output{"what follows the number", "%CPU\n7.5abc\n", 7.5F},
                    Output{"a comma ends the number", "%CPU\n7,5\n", 7.0F},
                    Output{"a sign", "%CPU\n-1.5\n", -1.5F}, Output{"a plus", "%CPU\n+1.5\n", 1.5F},
                    Output{"an exponent", "%CPU\n1.5e2\n", 150.0F},
                    Output{"half an exponent", "%CPU\n1.5e\n", 1.5F},
                    Output{"half an exponent with its sign", "%CPU\n1.5e-\n", 1.5F},
                    Output{"no digit before the point", "%CPU\n.5\n", 0.5F},
                    Output{"no digit behind the point", "%CPU\n5.\n", 5.0F},
                    Output{"a point alone", "%CPU\n.\n", 0.0F},
                    Output{"a sign alone", "%CPU\n-\n", 0.0F},
                    Output{"a number of another base", "%CPU\n0x10\n", 0.0F},
                    Output{"a word that some readers take for a number", "%CPU\nnan\n", 0.0F},
                    Output{"another", "%CPU\ninf\n", 0.0F},
                    Output{"the header alone", "%CPU", -1.0F}, Output{"nothing printed", "", -1.0F},
                    Output{"bytes that are no text", "%CPU\n\xFF\n12\n", -1.0F},
                    Output{"the command does not start", std::nullopt, 0.0F}));

TEST(ProcessCPU, IsAskedByTheProcessesOwnNumber) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.asked.clear();
  sampler.engine().askSystemPS(0);
  sampler.engine().askSystemPS(-7);
  sampler.engine().askSystemPS(INT32_MAX);
  EXPECT_EQ(machine.asked, std::vector<std::string>({"ps -p 0 -o %cpu", "ps -p -7 -o %cpu",
                                                     "ps -p 2147483647 -o %cpu"}));
}

/// As in much of Europe.
class CommaForPoint : public std::numpunct<char> {
 protected:
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(ProcessCPU, HasAPointInEveryLocale) {
  TestMachine machine;
  machine.commands["ps -p 123 -o %cpu"] = "%CPU\n1312.5\n";
  Sampler sampler(machine);
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
  EXPECT_EQ(sampler.engine().askSystemPS(123), 1312.5F);
  std::locale::global(before);
}

TEST(HostQueries, AreNotPartOfAPass) {
  TestMachine machine;
  Sampler sampler(machine);
  machine.asked.clear();
  sampler.pass();
  for (const std::string& question : machine.asked) {
    EXPECT_FALSE(question.starts_with("ps ")) << question;
    EXPECT_NE(question, kReportCommand);
  }
}

}  // namespace
}  // namespace halvermonte::test
