#include <gtest/gtest.h>

#include "halvermonte/SMC.h"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/PlatformCalls.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

struct Opening {
  int code;
  uint32_t conn;
  std::string printed;
};

Opening opened(TestMachine& machine) {
  const ScopedMachine scope(machine);
  const size_t handles = portable::liveHandles();
  Opening opening{.code = 0, .conn = 77, .printed = {}};
  testing::internal::CaptureStdout();
  opening.code = SMCOpen(&opening.conn);
  std::fflush(stdout);
  opening.printed = testing::internal::GetCapturedStdout();
  if (opening.code == 0) {
    EXPECT_EQ(SMCClose(opening.conn), 0);
  }
  EXPECT_EQ(portable::liveHandles(), handles) << "service and iterator are given back";
  return opening;
}

TEST(SMCOpen, GivesAConnectionAndPrintsNothing) {
  TestMachine machine;
  const Opening opening = opened(machine);
  EXPECT_EQ(opening.code, 0);
  EXPECT_NE(opening.conn, 77U);
  EXPECT_EQ(opening.printed, "");
}

TEST(SMCOpen, SaysThatThereIsNoSMC) {
  TestMachine machine;
  machine.controller.present = false;
  const Opening opening = opened(machine);
  EXPECT_EQ(opening.code, 1);
  EXPECT_EQ(opening.conn, 77U) << "stays as it was";
  EXPECT_EQ(opening.printed, "Error: no SMC found\n");
}

TEST(SMCOpen, SaysTheCodeOfAFailedMatching) {
  TestMachine machine;
  machine.controller.code = 0xE00002BC;
  const Opening opening = opened(machine);
  EXPECT_EQ(opening.code, 1);
  EXPECT_EQ(opening.printed, "Error: IOServiceGetMatchingServices() = e00002bc\n");
}

TEST(SMCOpen, SaysTheCodeOfAFailedOpening) {
  TestMachine machine;
  machine.openCode = 0x1F;
  const Opening opening = opened(machine);
  EXPECT_EQ(opening.code, 1);
  EXPECT_EQ(opening.conn, 77U) << "stays as it was";
  EXPECT_EQ(opening.printed, "Error: IOServiceOpen() = 0000001f\n");
}

TEST(SMCOpen, AsksForTheMainPortWithoutABootstrapPort) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  const PlatformCalls calls;
  uint32_t conn = 0;
  ASSERT_EQ(SMCOpen(&conn), 0);
  EXPECT_EQ(calls.made, std::vector<std::string>{"IOMasterPort 0"});
  SMCClose(conn);
}

TEST(SMCClose, GivesTheKernelsCodeForAConnectionThatIsNotOpen) {
  TestMachine machine;
  const ScopedMachine scope(machine);
  uint32_t conn = 0;
  ASSERT_EQ(SMCOpen(&conn), 0);
  EXPECT_EQ(SMCClose(conn), 0);
  EXPECT_EQ(static_cast<uint32_t>(SMCClose(conn)), kCodeInvalidDestination);
  EXPECT_EQ(static_cast<uint32_t>(SMCClose(0)), kCodeInvalidDestination);
}

TEST(SMCClose, EndsTheConnectionForReads) {
  TestMachine machine;
  machine.keys["TC0P"] = sp78(42);
  const ScopedMachine scope(machine);
  uint32_t former = 0;
  uint32_t conn = 0;
  ASSERT_EQ(SMCOpen(&former), 0);
  ASSERT_EQ(SMCClose(former), 0);
  ASSERT_EQ(SMCOpen(&conn), 0);
  EXPECT_EQ(SMCGetTemperature("TC0P", former), -1.0) << "another one is open, but not this";
  EXPECT_EQ(SMCGetTemperature("TC0P", conn), 42.0);
  EXPECT_EQ(SMCClose(conn), 0);
}

}  // namespace
}  // namespace halvermonte::test
