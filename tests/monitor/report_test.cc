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
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::ResultOf;
using ::testing::SizeIs;

class ReportLines : public ::testing::Test {
 protected:
  ReportLines() {
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
    view.temperatures.push_back({name, number});
  }
  void addShortTemperature(const std::string& name, int32_t number) {
    view.shortTemperatures.push_back({name, number});
  }
  void addFan(const std::string& name, int32_t number) {
    view.fans.push_back({name, number, Unit::revolutionsPerMinute});
  }
  void addTemperatures(int count) {
    for (int i = 1; i <= count; ++i) addTemperature("Core " + std::to_string(i), i);
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

TEST_F(ReportLines, ThreadsAreShownBesideCores) {
  view.processor = "Xeon";
  view.cores = 1;
  view.logicalCores = 2;
  EXPECT_EQ(report()[1], "desk   Xeon, 1 core, 2 threads");
}

TEST_F(ReportLines, FactsGoOnInTheNextLineIfTheyDoNotFit) {
  view.processor = "A processor with quite a name";
  style.columns = 30;
  EXPECT_EQ(report()[1], "desk");
  EXPECT_EQ(report()[2], "A processor with quite a name");
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

TEST_F(ReportLines, GraphKeepsTheNewestSamplesThatFit) {
  view.disks.historyScale = 7;
  view.disks.read = {.rateText = "-", .totalText = "-", .history = std::vector<float>(75, 0)};
  view.disks.read.history.back() = 7;
  style.columns = 37;
  EXPECT_EQ(section("Disks")[0], "  read             -           -   ▁█");
}

TEST_F(ReportLines, RatesAreNotShownBeforeTheSecondPass) {
  view.disks.read.rateText = "0 KB/s";
  view.number = 0;
  EXPECT_THAT(section("Disks"), Each(Not(HasSubstr("KB/s"))));
}

TEST_F(ReportLines, TemperaturesAreAlignedMarkedAndDrawn) {
  addTemperature("GPU", 104);
  addTemperature("CPU Core", 47);
  addShortTemperature("CPU Core", 47);
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
  addTemperature("Café", 47);
  addShortTemperature("Café", 47);
  view.disks.written.history = {0};
  style.unicode = false;
  const auto isAscii = [](const std::string& line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c < 0x7F; });
  };
  EXPECT_THAT(report(), Each(ResultOf(isAscii, true)));
  EXPECT_EQ(section("Temperatures")[0], "* Caf?    47 C  =====------");
}

TEST_F(ReportLines, TemperaturesFlowIntoColumnsIfRowsAreFew) {
  addTemperatures(6);
  style.columns = 60;
  style.rows = 11;
  EXPECT_THAT(section("Temperatures"), ElementsAre("  Core 1    1 °C     Core 4    4 °C",
                                                   "  Core 2    2 °C     Core 5    5 °C",
                                                   "  Core 3    3 °C     Core 6    6 °C"));
}

TEST_F(ReportLines, WhatHasNoPlaceIsCounted) {
  addTemperatures(30);
  style.columns = 60;
  style.rows = 10;
  EXPECT_THAT(report(), SizeIs(10));
  EXPECT_EQ(report().back(), "  and 27 more");
}

TEST_F(ReportLines, FitsEveryWindow) {
  addTemperatures(100);
  for (const char* fan : {"Left", "Right", "A fan with a long name"}) {
    addFan(fan, 1);
  }
  for (style.columns = 1; style.columns < 130; style.columns += 9) {
    for (style.rows = 1; style.rows < 40; ++style.rows) {
      const std::vector<Line> lines = reportLines(view, style);
      ASSERT_LE(lines.size(), style.rows);
      for (const Line& line : lines) ASSERT_LE(cells(line), style.columns);
    }
  }
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
