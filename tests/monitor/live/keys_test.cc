// What the keys of the live view do.
#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/monitor/live/LiveScreenOfAMachine.hpp"

namespace halvermonte::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

TEST_F(LiveScreenOfAMachine, FoldingOneSectionLeavesTheOthersAsTheyAre) {
  addManyTemperatures();
  pass();
  const WindowSize size{80, 16};
  press({{Key::down}, {Key::enter}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">▾ CPU (8)")));
  press({{Key::enter}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">▸ CPU (8)")));
  EXPECT_THAT(rows(size), Contains(StartsWith(" ▸ Memory (9)"))) << "which has room now";
  EXPECT_THAT(rows(size), Contains(StartsWith(" ▾ Disks")));
}

TEST_F(LiveScreenOfAMachine, LeftOnASensorFoldsItsSection) {
  addTwoGroups();
  pass();
  press({{Key::down}, {Key::down}, {Key::left}});
  EXPECT_THAT(rows(), Contains(StartsWith(">▸ CPU (2)")));
  press({{Key::right}});
  EXPECT_THAT(rows(), Contains(StartsWith(">▾ CPU (2)")));
}

TEST_F(LiveScreenOfAMachine, EveryRowCanBeReached) {
  addManyTemperatures();
  pass();
  const WindowSize size{40, 8};
  press({{Key::down}, {Key::right}}, size);
  std::vector<std::string> seen;
  for (int i = 0; i < 40; ++i) {
    press({{Key::down}}, size);
    for (const std::string& row : rows(size)) seen.push_back(row);
  }
  for (const char* name : {">  CPU Core 1", ">  CPU Core 8", ">▸ Memory (9)", ">  write"}) {
    EXPECT_THAT(seen, Contains(StartsWith(name)));
  }
}

TEST_F(LiveScreenOfAMachine, PagesGoThroughTheList) {
  addManyTemperatures();
  pass();
  const WindowSize size{40, 10};
  press({{Key::down}, {Key::right}, {Key::end}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">  write")));
  press({{Key::home}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">▾ CPU")));
  press({{Key::pageDown}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">  CPU Core ")));
  press({{Key::pageUp}}, size);
  EXPECT_THAT(rows(size), Contains(StartsWith(">▾ CPU")));
}

TEST_F(LiveScreenOfAMachine, WheelScrollsAndTheHottestStays) {
  addManyTemperatures();
  pass();
  const WindowSize size{40, 8};
  press({{Key::down}, {Key::right}, {Key::escape}}, size);
  const std::vector<std::string> before = rows(size);
  press({{Key::wheelDown}}, size);
  EXPECT_NE(rows(size)[3], before[3]);
  EXPECT_EQ(rows(size)[1], before[1]);
  for (int i = 0; i < 40; ++i) press({{Key::wheelDown}}, size);
  EXPECT_THAT(rows(size)[6], StartsWith("   write")) << "the list ends there";
  for (int i = 0; i < 40; ++i) press({{Key::wheelUp}}, size);
  EXPECT_EQ(rows(size), before);
}

TEST_F(LiveScreenOfAMachine, FilterShowsOnlyNamesWithItsText) {
  addTwoGroups();
  machine.keys["FNum"] = ui8(1);
  machine.keys["F0Ac"] = flt(1200);
  pass();
  type("/");
  EXPECT_THAT(rows().back(), StartsWith("/_"));
  type("corx");
  press({{Key::backspace}, {Key::character, "E"}});
  EXPECT_THAT(rows().back(), StartsWith("/corE_"));
  EXPECT_THAT(rows(), Contains(StartsWith("   CPU Core 1")));
  for (const char* name : {"Mem Bank", "Fan", "Disks"}) {
    EXPECT_THAT(rows(), Each(Not(HasSubstr(name))));
  }
  press({{Key::enter}});
  EXPECT_THAT(rows().back(), HasSubstr("only \"corE\""));
  press({{Key::escape}});
  EXPECT_THAT(rows(), Contains(HasSubstr("Mem Bank")));
}

TEST_F(LiveScreenOfAMachine, FilterFindsSensorsInFoldedSections) {
  addTwoGroups();
  pass();
  press({{Key::down}, {Key::left}});
  type("/core");
  EXPECT_THAT(rows(), Contains(StartsWith("   CPU Core 1")));
}

TEST_F(LiveScreenOfAMachine, LetterOfTheFilterIsNoCommand) {
  pass();
  type("/q");
  EXPECT_FALSE(screen.wantsToEnd());
  press({{Key::escape}});
  type("q");
  EXPECT_TRUE(screen.wantsToEnd());
}

TEST_F(LiveScreenOfAMachine, BackspaceTakesAWholeCharacter) {
  pass();
  type("/");
  press({{Key::character, "é"}, {Key::backspace}, {Key::backspace}});
  EXPECT_THAT(rows().back(), StartsWith("/_"));
}

TEST_F(LiveScreenOfAMachine, SortsByNameOrByHeat) {
  addTwoGroups();
  pass();
  const auto isBefore = [this](const std::string& a, const std::string& b) {
    const std::string text = screen.draw({80, 24}, passes->now).text();
    return text.find("\n   " + a) < text.find("\n   " + b);
  };
  EXPECT_TRUE(isBefore("CPU Core 1", "CPU Core 2"));
  type("s");
  EXPECT_TRUE(isBefore("CPU Core 2", "CPU Core 1"));
}

TEST_F(LiveScreenOfAMachine, ShowsFahrenheitOnRequest) {
  addTwoGroups();
  pass();
  type("f");
  EXPECT_THAT(rows()[2], HasSubstr(" 162 °F "));
  type("f");
  EXPECT_THAT(rows()[2], HasSubstr(" 72 °C "));
}

TEST_F(LiveScreenOfAMachine, PauseIsShownAndAskedFor) {
  pass();
  EXPECT_FALSE(screen.isPaused());
  type("p");
  EXPECT_TRUE(screen.isPaused());
  EXPECT_THAT(rows()[0], HasSubstr("paused, 0 s ago"));
}

TEST_F(LiveScreenOfAMachine, HelpNamesKeysAndMarks) {
  pass();
  type("?");
  EXPECT_THAT(rows(), Contains(HasSubstr("sort by name or by heat")));
  EXPECT_THAT(rows(), Contains(HasSubstr("warm, from 80 °C; hot, from 95 °C")));
  press({{Key::escape}});
  EXPECT_THAT(rows(), Each(Not(HasSubstr("sort by name"))));
}

}  // namespace
}  // namespace halvermonte::test
