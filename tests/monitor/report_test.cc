#include "monitor/report/Report.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::ResultOf;

class ReportLines : public ::testing::Test {
 protected:
  ReportLines() {
    view.drives = 1;
    view.hostName = "desk";
    view.number = 1;
    view.title = "M1, simulated";
  }

  std::vector<std::string> report(bool colour = false) const {
    std::vector<std::string> lines;
    for (const Line& line : reportLines(view, style)) {
      lines.push_back(rendered(line, colour));
    }
    return lines;
  }

  // The lines behind the heading.
  std::vector<std::string> section(const std::string& heading) const {
    std::vector<std::string> lines = report();
    const auto begin = std::find_if(lines.begin(), lines.end(), [&heading](const auto& line) {
      return line.starts_with(heading);
    });
    return {begin == lines.end() ? begin : begin + 1, std::find(begin, lines.end(), "")};
  }

  void addTemperature(const std::string& name, int32_t number) {
    view.temperatures.push_back({.name = name, .number = number});
  }
  void addMarkedTemperature(const std::string& name, int32_t number) {
    view.temperatures.push_back({.name = name, .number = number, .lists = InLists::both});
  }
  void addFan(const std::string& name, int32_t number) {
    view.fans.push_back({.name = name, .number = number});
  }

  PassView view;
  ReportStyle style;
};

TEST_F(ReportLines, BeginsWithTheMachineAndWhatIsKnownOfIt) {
  view.processor = "Apple M1";
  view.cores = 8;
  view.uptime = "3 d 4 h";
  view.memoryUsed = "5 GB";
  view.memoryTotal = "8 GB";
  EXPECT_THAT(report()[0], "M1, simulated");
  EXPECT_THAT(report()[1], "desk   Apple M1, 8 cores   up 3 d 4 h   memory 5 GB of 8 GB");
}

TEST_F(ReportLines, NothingIsSaidOfWhatIsNotKnown) { EXPECT_EQ(report()[1], "desk"); }

TEST_F(ReportLines, FactsGoOnInTheNextLineIfTheyDoNotFit) {
  view.processor = "A processor with a name that leaves no place for another word";
  view.uptime = "3 d 4 h";
  EXPECT_EQ(report()[1], "desk   A processor with a name that leaves no place for another word");
  EXPECT_EQ(report()[2], "up 3 d 4 h");
}

TEST_F(ReportLines, GraphKeepsTheNewestSamplesThatFit) {
  view.disks.historyScale = 7;
  view.disks.read = {.rateText = "-", .totalText = "-", .history = std::vector<float>(75, 0)};
  view.disks.read.history.front() = 7;
  view.disks.read.history.back() = 7;
  EXPECT_THAT(section("Disks")[0], AllOf(EndsWith("▁█"), Not(HasSubstr("   █"))));
  EXPECT_EQ(cells(section("Disks")[0]), 80U);
}

TEST_F(ReportLines, SensorThatIsNoLongerReadSaysSo) {
  addTemperature("GPU", 47);
  addFan("Left", 0);
  view.temperatures.front().isRead = view.fans.front().isRead = false;
  EXPECT_THAT(section("Temperatures")[0], EndsWith("─  no longer read"));
  EXPECT_EQ(section("Fans")[0], "  Left          -  no longer read");
}

TEST_F(ReportLines, ThreadsAreShownBesideCores) {
  view.processor = "Xeon";
  view.cores = 1;
  view.logicalCores = 2;
  EXPECT_EQ(report()[1], "desk   Xeon, 1 core, 2 threads");
}

TEST_F(ReportLines, FansAreAlignedAndAStoppedOneSaysSo) {
  addFan("Left", 1200);
  addFan("Exhaust", 0);
  EXPECT_THAT(section("Fans"), ElementsAre("  Left      1200 rpm", "  Exhaust    stopped"));
}

TEST_F(ReportLines, EmptyComputerIsANormalComputer) {
  EXPECT_THAT(section("Fans"), ElementsAre("  none"));
  EXPECT_THAT(section("Temperatures"), ElementsAre("  none"));
}

TEST_F(ReportLines, DisksShowRatesTotalsAndTheHistoryNewestLast) {
  view.disks.read = {.rateText = "1.5 MB/s", .totalText = "12 GB", .history = {1, 101, 700000}};
  view.disks.written = {.rateText = "-", .totalText = "-", .history = {-1, 0, 700}};
  view.disks.historyScale = 700;
  view.disks.historyScaleText = "700 KB";
  EXPECT_THAT(report(), Contains("Disks            now       total   graph up to 700 KB/s"));
  EXPECT_THAT(section("Disks"), ElementsAre("  read      1.5 MB/s       12 GB   ▂▃█",
                                            "  write            -           -   ▁█"));
}

TEST_F(ReportLines, ComputerWithoutDrivesHasNoTraffic) {
  view.drives = 0;
  view.disks.read.rateText = "0 KB/s";
  EXPECT_THAT(section("Disks"), ElementsAre("  none"));
}

TEST_F(ReportLines, RatesAreNotShownBeforeTheSecondPass) {
  view.disks.read.rateText = "0 KB/s";
  view.number = 0;
  EXPECT_THAT(section("Disks"), Each(Not(HasSubstr("KB/s"))));
}

TEST_F(ReportLines, TemperaturesAreAlignedMarkedAndDrawn) {
  addTemperature("GPU", 104);
  addMarkedTemperature("CPU Core", 47);
  EXPECT_THAT(report(), Contains("Temperatures   • in the short list"));
  EXPECT_THAT(section("Temperatures"),
              ElementsAre("• CPU Core   47 °C  ━━━━━──────", "  GPU       104 °C  ━━━━━━━━━━─"));
}

TEST_F(ReportLines, BarsStayWithinTheirEnds) {
  addTemperature("A", std::numeric_limits<int32_t>::min());
  addTemperature("B", std::numeric_limits<int32_t>::max());
  EXPECT_THAT(section("Temperatures")[0], HasSubstr("  ───────────"));
  EXPECT_THAT(section("Temperatures")[1], HasSubstr("  ━━━━━━━━━━━"));
}

TEST_F(ReportLines, FahrenheitIsForTemperaturesAlone) {
  addTemperature("CPU", 100);
  style.fahrenheit = true;
  EXPECT_EQ(section("Temperatures")[0], "  CPU  212 °F  ━━━━━━━━━━─");
}

TEST_F(ReportLines, IsAsciiWithoutUnicode) {
  addMarkedTemperature("Café", 47);
  view.disks.written.history = {0};
  style.unicode = false;
  const auto isAscii = [](const std::string& line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c < 0x7F; });
  };
  EXPECT_THAT(report(), Each(ResultOf(isAscii, true)));
  EXPECT_EQ(section("Temperatures")[0], "* Caf?    47 C  =====------");
}

TEST_F(ReportLines, ColoursOnlyHotReadings) {
  addTemperature("A", 79);
  addTemperature("B", 80);
  addTemperature("C", 95);
  EXPECT_THAT(report(true), IsSupersetOf({HasSubstr("A   79 °C  ━"), HasSubstr("\033[33m   80 °C"),
                                          HasSubstr("\033[31m   95 °C")}));
}

TEST_F(ReportLines, EarlyEndOfAPassIsShown) {
  view.exception = "index 3 beyond bounds";
  EXPECT_EQ(report()[2], "this pass ended early: index 3 beyond bounds");
}

TEST_F(ReportLines, ProcessUseIsOfOneCore) {
  view.process = {.identifier = 42, .percentOfOneCore = 150.25F};
  EXPECT_EQ(report()[1], "desk   process 42: 150.2 % of one core");
}

TEST_F(ReportLines, ProcessUseThatIsNotMeasuredYetIsNotZero) {
  view.process = {.identifier = 42};
  EXPECT_EQ(report()[1], "desk   process 42: not known yet");
}

TEST_F(ReportLines, EndOfTheProcessIsShownInPlaceOfItsUse) {
  view.process = {.identifier = 42, .hasEnded = true};
  EXPECT_EQ(report()[1], "desk   process 42 has ended");
}

TEST_F(ReportLines, NamesCannotSteerTheTerminal) {
  view.title = "M1\033[2J, simulated";
  view.hostName = "de\nsk";
  addTemperature("C\rP\nU", 1);
  EXPECT_THAT(report(),
              Each(AllOf(Not(HasSubstr("\033")), Not(HasSubstr("\r")), Not(HasSubstr("\n")))));
}

}  // namespace
}  // namespace halvermonte
