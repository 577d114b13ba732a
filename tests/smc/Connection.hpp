// A connection to a machine of the test's, for as long as it is there.
#pragma once

#include <gtest/gtest.h>

#include "halvermonte/SMC.h"
#include "platform/portable/LiveCounters.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {

class ConnectionTest : public testing::Test {
 protected:
  ConnectionTest() { EXPECT_EQ(SMCOpen(&conn), 0); }
  ~ConnectionTest() override {
    EXPECT_EQ(SMCClose(conn), 0);
    EXPECT_EQ(portable::liveObjects(), objects_);
    EXPECT_EQ(portable::liveHandles(), handles_);
  }

  TestMachine machine;
  uint32_t conn = 0;

 private:
  size_t objects_ = portable::liveObjects();
  size_t handles_ = portable::liveHandles();
  ScopedMachine scope_{machine};
};

/// Kernel codes that differ in their low 14 bits only by being nonzero and zero there.
inline constexpr uint32_t kCodeWithLowBits = 0xE00002BC;
inline constexpr uint32_t kCodeWithoutLowBits = 0xE0004000;

}  // namespace halvermonte::test
