#include "platform/portable/KeptLines.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <thread>

#include "platform/Foundation.hpp"
#include "tests/support/Sampler.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

/// What the call writes to both standard streams.
std::string writtenBy(const std::function<void()>& call) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  call();
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
}

TEST(KeptLinesTest, APassWithoutAControllerAndDrivesPrintsNothing) {
  TestMachine machine;
  machine.controller.present = false;
  machine.driveReason = "the drives are on strike";
  Sampler sampler(machine);
  KeptLines lines;
  EXPECT_EQ(writtenBy([&] { sampler.pass(); }), "");
  EXPECT_EQ(lines.take(), "the drives are on strike\nError: no SMC found\n");
}

TEST(KeptLinesTest, TheInnermostKeeperGetsTheLineAndTheOuterOneTheNext) {
  KeptLines outer;
  {
    KeptLines inner;
    foundation::print("first");
    EXPECT_EQ(inner.take(), "first\n");
  }
  foundation::log("second");
  EXPECT_EQ(outer.take(), "second\n");
}

TEST(KeptLinesTest, AfterItsEndLinesAreLetOutAgain) {
  { const KeptLines lines; }
  EXPECT_EQ(writtenBy([] { foundation::print("out"); }), "out\n");
}

TEST(KeptLinesTest, LinesOfOtherThreadsAreLetOut) {
  KeptLines lines;
  EXPECT_EQ(writtenBy([] { std::jthread([] { foundation::print("elsewhere"); }).join(); }),
            "elsewhere\n");
  EXPECT_EQ(lines.take(), "");
}

}  // namespace
}  // namespace halvermonte::test
