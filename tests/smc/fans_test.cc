#include <cmath>
#include <limits>

#include "tests/smc/Connection.hpp"

namespace halvermonte::test {
namespace {

class SMCGetFanSpeedTest : public ConnectionTest {
 protected:
  float speed(KeyAnswer answer) {
    machine.keys["F3Ac"] = std::move(answer);
    return SMCGetFanSpeed(3, conn);
  }
};

TEST_F(SMCGetFanSpeedTest, DecodesQuarterRevolutions) {
  EXPECT_EQ(speed(rawKey("fpe2", {0x0A, 0x28})), 650.0F);
  EXPECT_EQ(speed(rawKey("fpe2", {0xFF, 0xFF})), 16383.75F) << "unsigned";
}

TEST_F(SMCGetFanSpeedTest, TakesFloatsAsTheyLie) {
  EXPECT_EQ(speed(flt(1200.7F)), 1200.7F);
  EXPECT_EQ(speed(flt(-1.0F)), -1.0F);
  EXPECT_TRUE(std::isnan(speed(flt(std::numeric_limits<float>::quiet_NaN()))));
}

TEST_F(SMCGetFanSpeedTest, IsZeroWithoutAReading) {
  EXPECT_EQ(SMCGetFanSpeed(4, conn), 0.0F);
  EXPECT_EQ(speed(rawKey("fpe2", {0x0A, 0x28}).withSize(0)), 0.0F);
  EXPECT_EQ(speed(fpe2(650).withInfoCode(kCodeWithoutLowBits)), 0.0F);
  EXPECT_EQ(speed(fpe2(650).withReadCode(kCodeWithoutLowBits)), 0.0F);
  EXPECT_EQ(speed(rawKey("ui16", {0x0A, 0x28})), 0.0F);
  EXPECT_EQ(speed(sp78(42)), 0.0F);
}

TEST_F(SMCGetFanSpeedTest, KnowsTenFans) {
  machine.keys["F0Ac"] = fpe2(100);
  machine.keys["F9Ac"] = fpe2(900);
  EXPECT_EQ(SMCGetFanSpeed(0, conn), 100.0F);
  EXPECT_EQ(SMCGetFanSpeed(9, conn), 900.0F);
}

using FanIndexDeathTest = SMCGetFanSpeedTest;

TEST_F(FanIndexDeathTest, EndsTheProcessBeyondNine) {
  char name[13] = {};
  EXPECT_DEATH(SMCGetFanSpeed(10, conn), "");
  EXPECT_DEATH(SMCGetFanSpeed(-1, conn), "");
  EXPECT_DEATH(SMCGetFanName(10, name, conn), "");
  EXPECT_DEATH(SMCGetFanName(-1, name, conn), "");
}

class SMCGetFanNumberTest : public ConnectionTest {
 protected:
  uint32_t number(KeyAnswer answer) {
    machine.keys["FNum"] = std::move(answer);
    return SMCGetFanNumber("FNum", conn);
  }
};

TEST_F(SMCGetFanNumberTest, IsTheByte) {
  EXPECT_EQ(number(ui8(2)), 2U);
  EXPECT_EQ(number(ui8(255)), 255U) << "unsigned";
}

TEST_F(SMCGetFanNumberTest, IsTheLastOfUpToFourBytes) {
  EXPECT_EQ(number(rawKey("ui16", {1, 2})), 2U);
  EXPECT_EQ(number(rawKey("ui32", {1, 2, 3, 4})), 4U);
}

TEST_F(SMCGetFanNumberTest, CountsEveryFourthByteOfMoreThanFour) {
  EXPECT_EQ(number(rawKey("ch8*", {1, 2, 3, 4, 5})), 1U + 5U);
  EXPECT_EQ(number(rawKey("ch8*", {1, 2, 3, 4, 5, 6, 7, 8, 9})), 1U + 5U + 9U);
}

TEST_F(SMCGetFanNumberTest, ReadsNoByteBeyondTheRecord) {
  const std::vector<uint8_t> ones(32, 1);
  EXPECT_EQ(number(rawKey("ch8*", ones)), 8U);
  EXPECT_EQ(number(rawKey("ch8*", ones).withSize(33)), 8U) << "bytes 0, 4, .. 28, and 32 is none";
  EXPECT_EQ(number(rawKey("ch8*", ones).withSize(0x7FFFFFFF)), 8U) << "at no cost";
}

TEST_F(SMCGetFanNumberTest, IsZeroForASizeWithTheTopBit) {
  EXPECT_EQ(number(rawKey("ch8*", {9}).withSize(0x80000000)), 0U);
  EXPECT_EQ(number(rawKey("ch8*", {9}).withSize(0xFFFFFFFF)), 0U);
}

TEST_F(SMCGetFanNumberTest, IsZeroWithoutAReading) {
  EXPECT_EQ(SMCGetFanNumber("FNum", conn), 0U);
  EXPECT_EQ(number(ui8(2).withInfoCode(kCodeWithoutLowBits)), 0U);
  EXPECT_EQ(number(ui8(2).withReadCode(kCodeWithoutLowBits)), 0U);
  EXPECT_EQ(number(ui8(2).withReadResult(0x84)), 0U);
}

}  // namespace
}  // namespace halvermonte::test
