// What a Mac's machine says of itself.
#include "platform/mac/MacMachine.hpp"

#include <gtest/gtest.h>

#include "platform/mac/KernelVariables.hpp"
#include "tests/mac/Sandwich.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

TEST(MacMachineTest, IsThisComputerAndCalledAMacIfItsModelIsNotKnown) {
  TestMachine below;
  const ScopedMachine scope(below);
  MacMachine mac;
  EXPECT_TRUE(mac.isThisComputer());
  EXPECT_EQ(mac.name(), "Mac");
}

TEST(MacMachineTest, ReadsTextVariablesAsCharacters) {
  TestMachine below;
  below.kernelVariables["hw.model"] = 0x3163614D;  // in memory: Mac1
  const ScopedMachine scope(below);
  EXPECT_EQ(MacMachine().name(), "Mac1");
}

TEST(MacMachineTest, LeavesTheSerialNumberOutOfTheHardwareReport) {
  TestMachine below;
  below.commands["system_profiler SPHardwareDataType -xml"] =
      hardwareReport("serial_number", "C02X");
  below.commands["date"] = hardwareReport("serial_number", "C02X");
  Sandwich mac(below);
  const auto report = mac.outputOfCommand("system_profiler SPHardwareDataType -xml");
  EXPECT_EQ(report->find("C02X"), std::string::npos);
  EXPECT_NE(mac.outputOfCommand("date")->find("C02X"), std::string::npos);
}

TEST(MacMachineTest, AVariableThatIsNotThereIsAbsent) {
  TestMachine below;
  below.kernelVariables["hw.memsize"] = 17'179'869'184;
  Sandwich mac(below);
  EXPECT_EQ(mac.kernelVariable("hw.memsize"), 17'179'869'184);
  EXPECT_EQ(mac.kernelVariable("hw.none"), std::nullopt);
}

TEST(MacMachineTest, ADriveBeyondTheLastIsUnreadable) {
  TestMachine below;
  below.drives = {DriveStatistics{1, 2}};
  Sandwich mac(below);
  mac.beginDriveWalk();
  EXPECT_TRUE(std::holds_alternative<UnreadableDrive>(mac.drive(0)));
  EXPECT_EQ(mac.driveCount(), 1U);
  mac.beginDriveWalk();
  EXPECT_TRUE(std::holds_alternative<DriveStatistics>(mac.drive(0)));
  EXPECT_TRUE(std::holds_alternative<UnreadableDrive>(mac.drive(1)));
}

}  // namespace
}  // namespace halvermonte::test
