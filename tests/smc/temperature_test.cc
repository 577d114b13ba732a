#include <cmath>
#include <limits>

#include "tests/smc/Connection.hpp"

namespace halvermonte::test {
namespace {

class SMCGetTemperatureTest : public ConnectionTest {
 protected:
  double reading(KeyAnswer answer) {
    machine.keys["TC0P"] = std::move(answer);
    return SMCGetTemperature("TC0P", conn);
  }
};

TEST_F(SMCGetTemperatureTest, DecodesFixedPoint) {
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x00})), 42.0);
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x40})), 42.25);
  EXPECT_EQ(reading(rawKey("sp78", {0x7F, 0x7F})), 127.484375) << "the lowest two bits are dropped";
}

TEST_F(SMCGetTemperatureTest, TakesALowByteAsSigned) {
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x80})), 41.5);
}

TEST_F(SMCGetTemperatureTest, CannotTellMinusOneFromNoReading) {
  EXPECT_EQ(reading(rawKey("sp78", {0xFF, 0x00})), -1.0);
}

/// The rule in the slowest words: both bytes signed, then quarters of a 256th counted downwards.
double slowlyDecoded(int high, int low) {
  const int signedHigh = high > 127 ? high - 256 : high;
  const int signedLow = low > 127 ? low - 256 : low;
  return std::floor((signedHigh * 256 + signedLow) / 4.0) / 64.0;
}

TEST_F(SMCGetTemperatureTest, DecodesEveryFixedPointValue) {
  for (int high = 0; high < 256; ++high) {
    for (int low = 0; low < 256; ++low) {
      const auto bytes = {static_cast<uint8_t>(high), static_cast<uint8_t>(low)};
      ASSERT_EQ(reading(rawKey("sp78", bytes)), slowlyDecoded(high, low)) << high << " " << low;
    }
  }
}

TEST_F(SMCGetTemperatureTest, TakesFloatsAsTheyLie) {
  EXPECT_EQ(reading(flt(36.6F)), static_cast<double>(36.6F));
  EXPECT_EQ(reading(flt(-400.0F)), -400.0);
  EXPECT_EQ(reading(flt(std::numeric_limits<float>::max())),
            static_cast<double>(std::numeric_limits<float>::max()));
  EXPECT_EQ(reading(flt(std::numeric_limits<float>::denorm_min())),
            static_cast<double>(std::numeric_limits<float>::denorm_min()));
  EXPECT_TRUE(std::isinf(reading(flt(std::numeric_limits<float>::infinity()))));
  EXPECT_TRUE(std::isnan(reading(flt(std::numeric_limits<float>::quiet_NaN()))));
}

TEST_F(SMCGetTemperatureTest, HasNoReadingInAnyOtherType) {
  for (const char* type : {"ui8 ", "ui16", "fpe2", "flag", "sp87", "SP78", "flt\t", "si16"}) {
    EXPECT_EQ(reading(rawKey(type, {0x2A, 0x00, 0x2A, 0x00})), -1.0) << type;
  }
}

TEST_F(SMCGetTemperatureTest, HasNoReadingWithoutData) {
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x00}).withSize(0)), -1.0);
  EXPECT_EQ(reading(sp78(42).withInfoResult(0x84)), -1.0);
  EXPECT_EQ(SMCGetTemperature("none", conn), -1.0);
}

TEST_F(SMCGetTemperatureTest, AsksOnlyWhetherTheSizeIsZero) {
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x00}).withSize(1)), 42.0);
  EXPECT_EQ(reading(rawKey("sp78", {0x2A, 0x00}).withSize(0xFFFFFFFF)), 42.0);
}

TEST_F(SMCGetTemperatureTest, HasNoReadingIfAStepFailed) {
  for (const uint32_t code : {kCodeWithLowBits, kCodeWithoutLowBits}) {
    EXPECT_EQ(reading(sp78(42).withInfoCode(code)), -1.0);
    EXPECT_EQ(reading(sp78(42).withReadCode(code)), -1.0);
  }
}

TEST_F(SMCGetTemperatureTest, IsZeroIfOnlyTheBytesWereRefused) {
  EXPECT_EQ(reading(sp78(42).withReadResult(0x85)), 0.0);
}

}  // namespace
}  // namespace halvermonte::test
