#include "monitor/TextReport.hpp"

#include <gmock/gmock.h>

#include <algorithm>
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

class TextReport : public ::testing::Test {
 protected:
  TextReport() {
    record.setHostName(Text("desk"));
    subject.title = "M1, simulated";
  }

  std::vector<std::string> report(bool colour = false) const {
    std::vector<std::string> lines;
    for (const Line& line : reportLines(record, subject, style)) {
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

  void setTemperatures(std::string_view names, std::string_view values) {
    record.setSensors_temperature(Text(names));
    record.setSensors_temperatureData(Text(values));
  }

  void setManyTemperatures(int count) {
    std::string names, values;
    for (int i = 1; i <= count; ++i) {
      names += "Core " + std::to_string(i) + "\n";
      values += std::to_string(i) + "\n";
    }
    setTemperatures(names, values);
  }

  StatisticsData record;
  ReportSubject subject;
  ReportStyle style;
};

TEST_F(TextReport, BeginsWithTheMachineAndWhatIsKnownOfIt) {
  subject.processor = "Apple M1";
  subject.cores = 8;
  record.setUptimeText(Text("3 d 4 h"));
  record.setSummary_memoryUsedText(Text("5 GB"));
  record.setSummary_memoryTotalText(Text("8 GB"));
  EXPECT_THAT(report()[0], "M1, simulated");
  EXPECT_THAT(report()[1], "desk   Apple M1, 8 cores   up 3 d 4 h   memory 5 GB of 8 GB");
}

TEST_F(TextReport, NothingIsSaidOfWhatIsNotKnown) { EXPECT_EQ(report()[1], "desk"); }

TEST_F(TextReport, ThreadsAreToldApartFromCores) {
  subject.processor = "Xeon";
  subject.cores = 1;
  record.setSummary_cpuLogicalCores(Number::ofInt32(2));
  EXPECT_EQ(report()[1], "desk   Xeon, 1 core, 2 threads");
}

TEST_F(TextReport, FactsGoOnInTheNextLineWhereTheyDoNotFit) {
  subject.processor = "A processor with quite a name";
  style.columns = 30;
  EXPECT_EQ(report()[1], "desk");
  EXPECT_EQ(report()[2], "A processor with quite a name");
}

TEST_F(TextReport, FansAreAlignedAndAStoppedOneSaysSo) {
  record.setSensors_fans(Text("Left\nExhaust\n"));
  record.setSensors_fansData(Text("1200\n0\n"));
  EXPECT_THAT(section("Fans"), ElementsAre("  Left      1200 rpm", "  Exhaust    stopped"));
}

TEST_F(TextReport, EmptyComputerIsANormalComputer) {
  EXPECT_THAT(section("Fans"), ElementsAre("  none"));
  EXPECT_THAT(section("Temperatures"), ElementsAre("  none"));
}

TEST_F(TextReport, DisksShowRatesTotalsAndTheHistoryNewestLast) {
  record.setDiskIO_speedReadText(Text("1.5 MB/s"));
  record.setDiskIO_readText(Text("12 GB"));
  record.setDiskIO_activitiesMaxText(Text("700 KB"));
  record.setDiskIO_activitiesMax(Number::ofFloat32(700));
  const Array writes({Number::ofInt32(-1), Number::ofUInt64(0), Number::ofUInt64(700)});
  const Array reads({Number::ofUInt64(1), Number::ofUInt64(101), Number::ofUInt64(700000)});
  record.setDiskIO_activities(Array({writes, reads}));
  EXPECT_THAT(report(), Contains("Disks            now       total   graph up to 700 KB/s"));
  EXPECT_THAT(section("Disks"), ElementsAre("  read      1.5 MB/s       12 GB   ▂▃█",
                                            "  write            -           -   ▁█"));
}

TEST_F(TextReport, GraphKeepsTheNewestSamplesThatFit) {
  record.setDiskIO_activitiesMax(Number::ofFloat32(7));
  std::vector<Value> samples(74, Number::ofUInt64(0));
  samples.push_back(Number::ofUInt64(7));
  record.setDiskIO_activities(Array({Array(samples), Array(samples)}));
  style.columns = 37;
  EXPECT_EQ(section("Disks")[0], "  read             -           -   ▁█");
}

TEST_F(TextReport, RatesAreNotShownBeforeTheSecondPass) {
  record.setDiskIO_speedReadText(Text("0 KB/s"));
  subject.ratesKnown = false;
  EXPECT_THAT(section("Disks"), Each(Not(HasSubstr("KB/s"))));
}

TEST_F(TextReport, TemperaturesAreAlignedMarkedAndDrawn) {
  setTemperatures("GPU\nCPU Core\n", "104\n47\n");
  record.setSensors_temperatureMini(Text("CPU Core\n"));
  record.setSensors_temperatureMiniData(Text("47\n"));
  EXPECT_THAT(report(), Contains("Temperatures   • in the short list"));
  EXPECT_THAT(section("Temperatures"),
              ElementsAre("• CPU Core   47 °C  ━━━━━──────", "  GPU       104 °C  ━━━━━━━━━━─"));
}

TEST_F(TextReport, BarsStayWithinTheirEnds) {
  setTemperatures("A\nB\n", "-2147483648\n9223372036854775807\n");
  EXPECT_THAT(section("Temperatures")[0], HasSubstr("  ───────────"));
  EXPECT_THAT(section("Temperatures")[1], HasSubstr("  ━━━━━━━━━━━"));
}

TEST_F(TextReport, FahrenheitIsForTemperaturesAlone) {
  setTemperatures("CPU\n", "100\n");
  style.fahrenheit = true;
  EXPECT_EQ(section("Temperatures")[0], "  CPU  212 °F  ━━━━━━━━━━─");
}

TEST_F(TextReport, IsAsciiWithoutUnicode) {
  setTemperatures("Café\n", "47\n");
  record.setSensors_temperatureMini(Text("Café\n"));
  record.setSensors_temperatureMiniData(Text("47\n"));
  record.setDiskIO_activities(Array({Array({Number::ofUInt64(0)}), Array()}));
  style.unicode = false;
  const auto isAscii = [](const std::string& line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c < 0x7F; });
  };
  EXPECT_THAT(report(), Each(ResultOf(isAscii, true)));
  EXPECT_EQ(section("Temperatures")[0], "* Caf?    47 C  =====------");
}

TEST_F(TextReport, TemperaturesFlowIntoColumnsWhereRowsAreFew) {
  setManyTemperatures(6);
  style.columns = 60;
  style.rows = 11;
  EXPECT_THAT(section("Temperatures"), ElementsAre("  Core 1    1 °C     Core 4    4 °C",
                                                   "  Core 2    2 °C     Core 5    5 °C",
                                                   "  Core 3    3 °C     Core 6    6 °C"));
}

TEST_F(TextReport, WhatHasNoPlaceIsCounted) {
  setManyTemperatures(30);
  style.columns = 60;
  style.rows = 10;
  EXPECT_THAT(report(), SizeIs(10));
  EXPECT_EQ(report().back(), "  and 27 more");
}

TEST_F(TextReport, FitsEveryWindow) {
  setManyTemperatures(100);
  record.setSensors_fans(Text("Left\nRight\nA fan with a long name\n"));
  record.setSensors_fansData(Text("1\n2\n3\n"));
  for (style.columns = 1; style.columns < 130; style.columns += 9) {
    for (style.rows = 1; style.rows < 40; ++style.rows) {
      const std::vector<Line> lines = reportLines(record, subject, style);
      ASSERT_LE(lines.size(), style.rows);
      for (const Line& line : lines) ASSERT_LE(cells(line), style.columns);
    }
  }
}

TEST_F(TextReport, ColoursOnlyHotReadings) {
  setTemperatures("A\nB\nC\n", "79\n80\n95\n");
  EXPECT_THAT(report(true), IsSupersetOf({HasSubstr("A   79 °C  ━"), HasSubstr("\033[33m   80 °C"),
                                          HasSubstr("\033[31m   95 °C")}));
}

TEST_F(TextReport, EarlyEndOfAPassIsTold) {
  subject.trouble = "index 3 beyond bounds";
  EXPECT_EQ(report()[2], "this pass ended early: index 3 beyond bounds");
}

TEST_F(TextReport, ProcessLoadIsOfOneCore) {
  subject.process = {42, 150.25F};
  EXPECT_EQ(report()[1], "desk   process 42: 150.2 % of one core");
  subject.process->percentOfOneCore = -1;
  EXPECT_EQ(report()[1], "desk   process 42: not known");
}

TEST_F(TextReport, NamesCannotSteerTheTerminal) {
  subject.title = "M1\033[2J, simulated";
  record.setHostName(Text("de\nsk"));
  setTemperatures("C\rPU\n", "1\033[2J\n");
  EXPECT_THAT(report(),
              Each(AllOf(Not(HasSubstr("\033")), Not(HasSubstr("\r")), Not(HasSubstr("\n")))));
}

}  // namespace
}  // namespace halvermonte
