#include <gtest/gtest.h>

#include <exception>

#include "tests/engine/soak/Soak.hpp"

namespace halvermonte::test {
namespace {

// halvermonte_soak makes a hundred times as many and looks at the process's memory, too.
TEST(Soak, LeavesNothingBehindOver2000Passes) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Soak soak;
  std::string complaint;
  try {
    while (soak.passes() < 2000) soak.pass();
  } catch (const std::exception& exception) {
    complaint = exception.what();
  }
  testing::internal::GetCapturedStderr();
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(complaint, "");
  EXPECT_GT(soak.exceptions(), 0U) << "the machine is tamer than it is meant to be";
  EXPECT_LT(soak.exceptions(), 200U);
}

}  // namespace
}  // namespace halvermonte::test
