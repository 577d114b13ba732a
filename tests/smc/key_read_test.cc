#include <algorithm>
#include <cstring>

#include "tests/smc/Connection.hpp"

namespace halvermonte::test {
namespace {

bool isZero(const void* memory, size_t size) {
  const auto* const bytes = static_cast<const unsigned char*>(memory);
  return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

class SMCReadKeyTest : public ConnectionTest {
 protected:
  SMCReadKeyTest() { std::memset(&value, 0xEE, sizeof value); }
  uint32_t read(const char* key) { return static_cast<uint32_t>(SMCReadKey(key, &value, conn)); }

  SMCValue value;
};

TEST_F(SMCReadKeyTest, FillsSizeTypeAndAll32Bytes) {
  std::vector<uint8_t> bytes(32);
  for (uint8_t i = 0; i < 32; ++i) bytes[i] = static_cast<uint8_t>(i + 1);
  machine.keys["TC0P"] = rawKey("ch8*", bytes).withSize(3);
  EXPECT_EQ(read("TC0P"), 0U);
  EXPECT_EQ(value.dataSize, 3U);
  EXPECT_STREQ(value.dataType, "ch8*");
  EXPECT_EQ(std::memcmp(value.bytes, bytes.data(), 32), 0) << "whatever the size says";
}

TEST_F(SMCReadKeyTest, ClearsTheWholeRecordAndLeavesItsKeyEmpty) {
  machine.keys["TC0P"] = rawKey("ui8 ", {});
  EXPECT_EQ(read("TC0P"), 0U);
  EXPECT_STREQ(value.dataType, "ui8 ");
  std::memset(value.dataType, 0, sizeof value.dataType);
  EXPECT_TRUE(isZero(&value, sizeof value)) << "the tail after the bytes too";
}

TEST_F(SMCReadKeyTest, AsksForTheInfoAndThenForTheBytes) {
  machine.keys["TC0P"] = sp78(42);
  machine.asked.clear();
  read("TC0Pxyz");  // no more than four characters are the key
  EXPECT_EQ(machine.asked, (std::vector<std::string>{"info TC0P", "bytes TC0P"}));
}

TEST_F(SMCReadKeyTest, GivesTheCodeOfTheFirstStepAndAnEmptyValue) {
  machine.keys["TC0P"] = sp78(42).withInfoCode(kCodeWithoutLowBits);
  EXPECT_EQ(read("TC0P"), kCodeWithoutLowBits);
  EXPECT_TRUE(isZero(&value, sizeof value));
}

TEST_F(SMCReadKeyTest, GivesTheCodeOfTheSecondStepWithSizeAndTypeFilled) {
  machine.keys["TC0P"] = sp78(42).withReadCode(kCodeWithoutLowBits);
  EXPECT_EQ(read("TC0P"), kCodeWithoutLowBits);
  EXPECT_EQ(value.dataSize, 2U);
  EXPECT_STREQ(value.dataType, "sp78");
  EXPECT_TRUE(isZero(value.bytes, sizeof value.bytes));
}

TEST_F(SMCReadKeyTest, DoesNotExamineTheControllersResult) {
  machine.keys["TC0P"] = sp78(42).withInfoResult(0x84);
  EXPECT_EQ(read("TC0P"), 0U);
  EXPECT_EQ(value.dataSize, 0U);
  machine.keys["TC0P"] = sp78(42).withReadResult(0x84);
  EXPECT_EQ(read("TC0P"), 0U);
  EXPECT_EQ(value.dataSize, 2U);
  EXPECT_TRUE(isZero(value.bytes, sizeof value.bytes));
}

TEST_F(SMCReadKeyTest, SucceedsWithoutDataForAKeyThatTheControllerLacks) {
  EXPECT_EQ(read("none"), 0U);
  EXPECT_EQ(value.dataSize, 0U);
}

}  // namespace
}  // namespace halvermonte::test
