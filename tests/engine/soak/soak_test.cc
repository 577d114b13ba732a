#include <gtest/gtest.h>

#include "tests/engine/soak/Soak.hpp"

namespace halvermonte::test {
namespace {

// halvermonte_soak makes a hundred times as many and looks at the process's memory, too.
TEST(Soak, LeavesNothingBehindOver2000Passes) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Soak soak;
  while (soak.passes() < 2000) ASSERT_NO_THROW(soak.pass());
  testing::internal::GetCapturedStderr();
  testing::internal::GetCapturedStdout();
  EXPECT_GT(soak.exceptions(), 0U) << "the machine is tamer than it is meant to be";
  EXPECT_LT(soak.exceptions(), 200U);
}

}  // namespace
}  // namespace halvermonte::test
