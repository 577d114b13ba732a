// Kernel variables as sysctlbyname reads them.
#include <gtest/gtest.h>
#include <sys/sysctl.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

class KernelVariableTest : public ::testing::Test {
 protected:
  TestMachine machine;

 private:
  ScopedMachine scope_{machine};
};

TEST_F(KernelVariableTest, FillsABufferOf32Or64Bits) {
  machine.kernelVariables["hw.physicalcpu"] = 0x1122334455667788;
  int32_t narrow = 0;
  size_t size = sizeof narrow;
  EXPECT_EQ(sysctlbyname("hw.physicalcpu", &narrow, &size, nullptr, 0), 0);
  EXPECT_EQ(narrow, 0x55667788);
  EXPECT_EQ(size, 4u);
  uint8_t buffer[16] = {};
  size = sizeof buffer;
  EXPECT_EQ(sysctlbyname("hw.physicalcpu", buffer, &size, nullptr, 0), 0);
  EXPECT_EQ(size, 8u);
  EXPECT_EQ(buffer[7], 0x11);
  EXPECT_EQ(buffer[8], 0);
}

TEST_F(KernelVariableTest, LeavesABufferThatItDoesNotFit) {
  machine.kernelVariables["hw.physicalcpu"] = -1;
  for (const size_t wrong : std::initializer_list<size_t>{0, 1, 2, 3, 5, 7}) {
    uint64_t buffer = 99;
    size_t size = wrong;
    EXPECT_EQ(sysctlbyname("hw.physicalcpu", &buffer, &size, nullptr, 0), -1) << wrong;
    EXPECT_EQ(errno, ENOMEM);
    EXPECT_EQ(buffer, 99u);
    EXPECT_EQ(size, wrong);
  }
}

TEST_F(KernelVariableTest, ThatIsNotThereLeavesTheBuffer) {
  machine.kernelVariables["hw.physicalcpu"] = 4;
  int32_t value = 99;
  size_t size = sizeof value;
  EXPECT_EQ(sysctlbyname("hw.logicalcpu", &value, &size, nullptr, 0), -1);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_EQ(sysctlbyname("hw.physicalcpu", &value, &size, &value, sizeof value), -1);
  EXPECT_EQ(errno, EPERM);
  EXPECT_EQ(value, 99);
  EXPECT_EQ(size, 4u);
}

}  // namespace
}  // namespace halvermonte::test
