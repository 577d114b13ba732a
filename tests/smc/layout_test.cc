// What crosses to the kernel service, seen from its side as raw bytes.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "tests/smc/Connection.hpp"

namespace halvermonte::test {
namespace {

uint32_t integerAt(const void* record, size_t offset) {
  uint32_t value = 0;
  std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
  return value;
}

TEST(SMCRecords, HaveTheSizesOfTheProtocol) {
  EXPECT_EQ(sizeof(SMCParameters), 80U);
  EXPECT_EQ(sizeof(SMCValue), 52U);
  EXPECT_EQ(offsetof(SMCValue, dataSize), 8U);
  EXPECT_EQ(offsetof(SMCValue, dataType), 12U);
  EXPECT_EQ(offsetof(SMCValue, bytes), 17U);
}

class SMCCalls : public ConnectionTest {};

TEST_F(SMCCalls, AnswerAtTheOffsetsOfTheProtocol) {
  machine.keys["TC0P"] = rawKey("sp78", {0x2A, 0x40}).withSize(0x01020304);
  SMCParameters input{};
  SMCParameters output;
  std::memset(&output, 0xEE, sizeof output);
  input.key = 0x54433050;
  input.command = kSMCReadKeyInfo;
  ASSERT_EQ(SMCCall(kSMCStructureCall, &input, &output, conn), 0);
  EXPECT_EQ(integerAt(&output, 28), 0x01020304U);
  EXPECT_EQ(integerAt(&output, 32), 0x73703738U);
  EXPECT_EQ(output.result, 0);
  input.dataSize = output.dataSize;
  input.command = kSMCReadBytes;
  ASSERT_EQ(SMCCall(kSMCStructureCall, &input, &output, conn), 0);
  EXPECT_EQ(integerAt(&output, 48), 0x0000402AU);
}

TEST_F(SMCCalls, RefuseAnotherMethodOrCommand) {
  SMCParameters input{};
  SMCParameters output{};
  input.command = kSMCReadKeyInfo;
  EXPECT_EQ(static_cast<uint32_t>(SMCCall(3, &input, &output, conn)), kCodeBadArgument);
  input.command = 7;
  EXPECT_EQ(static_cast<uint32_t>(SMCCall(2, &input, &output, conn)), kCodeBadArgument);
}

TEST_F(SMCCalls, LeaveTheOutputIfTheCodeIsNotZero) {
  machine.keys["TC0P"] = sp78(42).withInfoCode(5);
  SMCParameters input{};
  SMCParameters output{};
  input.key = 0x54433050;
  input.command = kSMCReadKeyInfo;
  output.data32 = 0xCAFE;
  EXPECT_EQ(SMCCall(kSMCStructureCall, &input, &output, conn), 5);
  EXPECT_EQ(output.data32, 0xCAFEU);
}

}  // namespace
}  // namespace halvermonte::test
