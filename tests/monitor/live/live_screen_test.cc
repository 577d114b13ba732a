#include "monitor/live/LiveScreen.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/monitor/live/LivePasses.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class LiveScreenOfAMachine : public ::testing::Test {
 protected:
  // Its passes are made with the first one, so that a test can set the machine up.
  void pass(int count = 1) {
    if (!passes) passes.emplace(std::move(owned));
    passes->show(screen, count);
  }

  std::vector<std::string> rows(WindowSize size = {80, 24}) {
    std::istringstream text(screen.draw(size, passes->now + later).text());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  // Draws before each key, as the view does.
  void press(const std::vector<KeyPress>& keys, WindowSize size = {80, 24}) {
    for (const KeyPress& key : keys) {
      rows(size);
      screen.press(key);
    }
  }
  void type(const std::string& text) {
    for (const char c : text) press({{Key::character, std::string(1, c)}});
  }

  void addTwoGroups() {
    machine.keys["TC1C"] = flt(61);
    machine.keys["TC2C"] = flt(72);
    machine.keys["TM0P"] = flt(40);
  }
  void addManyTemperatures() {
    for (const char* key : {"TC1C", "TC2C", "TC3C", "TC4C", "TC5C", "TC6C", "TC7C", "TC8C", "TM0P",
                            "TM1P", "TM8P", "TM9P", "TM0S", "TM1S", "TM8S", "TM9S"}) {
      machine.keys[key] = flt(static_cast<float>(40 + machine.keys.size()));
    }
  }

  std::unique_ptr<TestMachine> owned = std::make_unique<TestMachine>();
  TestMachine& machine = *owned;
  std::optional<LivePasses> passes;
  LiveScreen screen{true, false, History::Duration(1)};
  std::chrono::steady_clock::duration later{0};
};

TEST_F(LiveScreenOfAMachine, SaysThatItWaitsForTheFirstPass) {
  const std::string text = screen.draw({40, 4}, {}).text();
  EXPECT_EQ(text, "halvermonte-monitor\n\nwaiting for the first pass\n\n");
}

TEST_F(LiveScreenOfAMachine, SimulatedOneIsNotTakenForThisComputer) {
  pass();
  EXPECT_THAT(rows()[0], StartsWith("simulated: Empty machine  "));
}

TEST_F(LiveScreenOfAMachine, ShowsAgeAndCostOfThePass) {
  pass();
  EXPECT_THAT(rows()[0], EndsWith("  0 s ago, pass 0.8 ms"));
  later = 5s;
  EXPECT_THAT(rows()[0], EndsWith("  5 s ago, pass 0.8 ms"));
  later = 10min;
  EXPECT_THAT(rows()[0], EndsWith("  10 min ago, pass 0.8 ms"));
  later = 30h;
  EXPECT_THAT(rows()[0], EndsWith("  30 h ago, pass 0.8 ms"));
}

TEST_F(LiveScreenOfAMachine, HeadingsShowTheHottestOfTheirGroup) {
  addTwoGroups();
  pass();
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith(" ▾ CPU (2): CPU Core 2"), HasSubstr(" 72 °C "))));
  EXPECT_THAT(rows()[2], AllOf(StartsWith(" Hottest: CPU Core 2"), HasSubstr(" 72 °C ")));
}

TEST_F(LiveScreenOfAMachine, SectionsFoldIfRoomIsShort) {
  addTwoGroups();
  pass();
  const std::vector<std::string> few = rows({80, 10});
  EXPECT_THAT(few, Contains(StartsWith(" ▸ CPU (2): CPU Core 2")));
  EXPECT_THAT(few, Not(Contains(StartsWith("   CPU Core"))));
  EXPECT_THAT(few, Contains(StartsWith("   write"))) << "fans and disks unfold first";
}

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

TEST_F(LiveScreenOfAMachine, SelectedSensorHasItsExtremesAndItsOrigin) {
  for (const float degrees : {50.F, 40.F, 63.F}) {
    machine.keys["TM0P"] = flt(degrees);
    pass();
  }
  press({{Key::down}, {Key::down}});
  EXPECT_THAT(rows(), Contains(" minimum 40 °C, maximum 63 °C, average 51 °C since the start"));
}

// Lists its sensors as a computer does that reads them from files.
class ListingComputer : public TestMachine {
 public:
  SensorInventory inventory() override {
    SensorListing drive;
    drive.driver = "nvme";
    drive.device = "pci0/nvme0";
    drive.file = "temp1_input";
    drive.label = "Composite";
    drive.key = "Tz1x";
    SensorListing fan;
    fan.driver = "thinkpad";
    fan.device = "platform/fan";
    fan.file = "fan1_input";
    fan.key = "F0Ac";
    return {drive, fan};
  }
};

TEST_F(LiveScreenOfAMachine, SelectedSensorHasItsKeyDriverAndFile) {
  auto computer = std::make_unique<ListingComputer>();
  computer->addedNames = {{"Tz1x", "WD Blue"}};
  computer->keys["Tz1x"] = flt(40);
  computer->keys["FNum"] = ui8(1);
  computer->keys["F0Ac"] = flt(1200);
  owned = std::move(computer);
  pass();
  EXPECT_THAT(rows(), Contains(StartsWith(" ▾ Drives (1): WD Blue"))) << "by its driver";
  press({{Key::down}, {Key::down}});
  EXPECT_THAT(rows(), Contains(" key Tz1x, nvme pci0/nvme0/temp1_input \"Composite\""));
  press({{Key::down}, {Key::down}});
  EXPECT_THAT(rows(), Contains(" key F0Ac, thinkpad platform/fan/fan1_input"));
}

TEST_F(LiveScreenOfAMachine, SelectedSensorOfTheEventSystemHasItsServices) {
  machine.setTemperatureSensors(
      {sensor("GPU MTR Temp Sensor1", 40), sensor("GPU MTR Temp Sensor4", 60)});
  pass();
  press({{Key::down}, {Key::down}});
  EXPECT_THAT(rows(),
              Contains(StartsWith(" HID service \"GPU MTR Temp Sensor1\"; HID service \"")));
}

TEST_F(LiveScreenOfAMachine, SelectedSensorThatFellFarSaysWhatTheMachineGives) {
  machine.keys["TM0P"] = flt(90);
  pass();
  machine.keys["TM0P"] = flt(30);
  pass();
  press({{Key::down}, {Key::down}});
  const std::vector<std::string> lines = rows();
  EXPECT_THAT(lines, Contains(StartsWith(" the machine gives 30 °C: a fall of more than 25 ")));
  EXPECT_EQ(lines[22], " a pass") << "what does not fit goes on in the next line";
}

TEST_F(LiveScreenOfAMachine, SensorThatIsNoLongerReadSaysSo) {
  machine.keys["TM0P"] = flt(60);
  pass(8);
  machine.keys.erase("TM0P");
  pass();
  press({{Key::down}, {Key::down}});
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith(">  Mem Bank A1"), HasSubstr(" 59 °C?  no longer"),
                                     EndsWith("⣤⣤⡄"))));
  EXPECT_THAT(rows(), Contains(" no longer read: the machine gives no reading"));
}

TEST_F(LiveScreenOfAMachine, WarmAndHotReadingsAreMarkedNotOnlyColoured) {
  machine.keys["TC1C"] = flt(79);
  machine.keys["TC2C"] = flt(80);
  machine.keys["TC3C"] = flt(95);
  pass();
  EXPECT_THAT(rows(), Contains(HasSubstr("79 °C   ━")));
  EXPECT_THAT(rows(), Contains(HasSubstr("80 °C!  ━")));
  EXPECT_THAT(rows(), Contains(HasSubstr("95 °C!! ━")));
}

TEST_F(LiveScreenOfAMachine, FansAreStoppedOrNotRead) {
  machine.keys["FNum"] = ui8(3);
  machine.keys["F0Ac"] = flt(1200);
  machine.keys["F1Ac"] = flt(0);
  pass();
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   Fan 1 "), HasSubstr(" 1200 rpm "))));
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   Fan 2 "), HasSubstr(" stopped "))));
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   Fan 3 "), HasSubstr(" -?  no longer"))));
}

TEST_F(LiveScreenOfAMachine, DisksHaveRatesTotalsAndCharts) {
  machine.drives = {DriveStatistics{1000, 2000}};
  pass();
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   read "), HasSubstr(" - "))));
  machine.now += 1;
  machine.drives = {DriveStatistics{5'001'000, 7'002'000}};
  pass();
  EXPECT_THAT(rows(), Contains(" ▾ Disks  charts up to 10 MB/s"));
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   read "), HasSubstr(" 5 MB/s "),
                                     HasSubstr(" 5 MB "), EndsWith("⣠"))));
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   write "), EndsWith("⣰"))));
}

TEST_F(LiveScreenOfAMachine, SleepIsAGapInTheHistory) {
  machine.keys["TM0P"] = flt(60);
  pass(2);
  machine.now += 8 * 3600;
  pass(2);
  EXPECT_THAT(rows(), Contains(AllOf(StartsWith("   Mem Bank A1 "), EndsWith("⣤  ⣤"))));
}

TEST_F(LiveScreenOfAMachine, EmptyComputerIsANormalComputer) {
  machine.controller.present = false;
  pass();
  EXPECT_THAT(rows()[2], " no temperatures to read here");
  EXPECT_THAT(rows(), Contains(StartsWith(" ▾ Disks")));
}

// Its first list of sensors, of which the values are taken, is shorter than the next, of the names.
class ForgetfulComputer : public TestMachine {
 public:
  std::shared_ptr<const HIDServices> hidServices(HIDSensorKind) override {
    return services(++asked == 1 ? HIDServices() : HIDServices{sensor("gas gauge battery", 30)});
  }

 private:
  int asked = 0;
};

TEST_F(LiveScreenOfAMachine, EarlyEndOfAPassIsShown) {
  owned = std::make_unique<ForgetfulComputer>();
  pass();
  EXPECT_THAT(rows().back(), StartsWith("? help   q quit   this pass ended early: index 0"));
}

TEST_F(LiveScreenOfAMachine, WideWindowHasColumns) {
  addManyTemperatures();
  pass();
  const std::vector<std::string> wide = rows({200, 20});
  EXPECT_THAT(wide, Contains(AllOf(StartsWith(" ▾ CPU (8)"), HasSubstr(" ▾ Memory (9)"),
                                   HasSubstr(" ▾ Disks"))));
  EXPECT_THAT(wide, Contains(EndsWith(" read                             -    Zero KB")))
      << "its chart stands below it";
}

TEST_F(LiveScreenOfAMachine, ColumnThatIsTooHighFlowsOnInTheNext) {
  machine.keys["FNum"] = ui8(2);
  for (const char* fan : {"F0Ac", "F1Ac"}) machine.keys[fan] = flt(1200);
  addManyTemperatures();
  pass();
  press({{Key::end}}, {200, 19});
  for (const std::string& row : rows({200, 19})) EXPECT_THAT(row, Not(HasSubstr(">▾ Fans")));
  EXPECT_THAT(rows({200, 19}), Contains(HasSubstr(">  write")));
}

TEST_F(LiveScreenOfAMachine, FitsEveryWindow) {
  addManyTemperatures();
  machine.keys["FNum"] = ui8(2);
  pass(3);
  for (const bool isSelected : {false, true}) {
    for (size_t columns = 1; columns < 230; columns += 19) {
      for (size_t lines = 1; lines < 70; lines += 6) {
        if (isSelected) press({{Key::down}, {Key::enter}}, {columns, lines});
        ASSERT_EQ(rows({columns, lines}).size(), lines);
      }
    }
  }
}

TEST_F(LiveScreenOfAMachine, NamesCannotSteerTheTerminal) {
  machine.hostName = "de\033[2Jsk";
  machine.keys["FNum"] = ui8(1);
  machine.keys["F0ID"] = fanDescriptor("Ex\rhaust");
  machine.keys["F0Ac"] = flt(1200);
  pass();
  EXPECT_THAT(rows(), Each(AllOf(Not(HasSubstr("\033")), Not(HasSubstr("\r")))));
}

}  // namespace
}  // namespace halvermonte::test
