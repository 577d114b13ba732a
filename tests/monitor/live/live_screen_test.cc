#include <gmock/gmock.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "tests/monitor/live/LiveScreenOfAMachine.hpp"

namespace halvermonte::test {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

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
