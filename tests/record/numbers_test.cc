#include <gtest/gtest.h>

#include <limits>

#include "halvermonte/Values.hpp"

namespace halvermonte::test {
namespace {

constexpr auto kInt32Max = std::numeric_limits<int32_t>::max();
constexpr auto kInt32Min = std::numeric_limits<int32_t>::min();
constexpr auto kInt64Max = std::numeric_limits<int64_t>::max();
constexpr auto kInt64Min = std::numeric_limits<int64_t>::min();
constexpr auto kUInt64Max = std::numeric_limits<uint64_t>::max();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(NumberTest, AnAbsentNumberIsZero) {
  const Number absent;
  EXPECT_FALSE(absent);
  EXPECT_EQ(absent.int32Value(), 0);
  EXPECT_EQ(absent.int64Value(), 0);
  EXPECT_EQ(absent.uint64Value(), 0u);
  EXPECT_EQ(absent.float32Value(), 0.0F);
  EXPECT_EQ(absent.float64Value(), 0.0);
}

TEST(NumberTest, ANumberRemembersItsForm) {
  EXPECT_EQ(Number::ofInt32(1).form(), Number::Form::int32);
  EXPECT_EQ(Number::ofInt64(1).form(), Number::Form::int64);
  EXPECT_EQ(Number::ofUInt64(1).form(), Number::Form::uint64);
  EXPECT_EQ(Number::ofFloat32(1).form(), Number::Form::float32);
  EXPECT_EQ(Number::ofFloat64(1).form(), Number::Form::float64);
}

TEST(NumberTest, EachFormKeepsItsWholePrecision) {
  EXPECT_EQ(Number::ofInt32(kInt32Min).int32Value(), kInt32Min);
  EXPECT_EQ(Number::ofInt64(kInt64Min).int64Value(), kInt64Min);
  EXPECT_EQ(Number::ofUInt64(kUInt64Max - 1).uint64Value(), kUInt64Max - 1);
  EXPECT_EQ(Number::ofFloat32(0.1F).float32Value(), 0.1F);
  EXPECT_EQ(Number::ofFloat64(0.1).float64Value(), 0.1);
}

TEST(NumberTest, IntegersKeepTheirLowBitsInANarrowerForm) {
  EXPECT_EQ(Number::ofUInt64(0x1'8000'0001).int32Value(), kInt32Min + 1);
  EXPECT_EQ(Number::ofUInt64(kUInt64Max).int32Value(), -1);
  EXPECT_EQ(Number::ofInt32(-1).uint64Value(), kUInt64Max);
  EXPECT_EQ(Number::ofInt32(-1).int64Value(), -1);
  EXPECT_EQ(Number::ofInt64(-3'000'000'000).int32Value(), 1'294'967'296);
  EXPECT_EQ(Number::ofUInt64(kUInt64Max).int64Value(), -1);
}

TEST(NumberTest, IntegersAreRoundedToTheNearestFloat) {
  EXPECT_EQ(Number::ofInt32(16'777'217).float32Value(), 16'777'216.0F);
  EXPECT_EQ(Number::ofInt32(-1).float32Value(), -1.0F);
  EXPECT_EQ(Number::ofInt64(-3'000'000'000).float64Value(), -3e9);
  EXPECT_EQ(Number::ofUInt64(100'000'000'000).float32Value(), 99'999'997'952.0F);
  EXPECT_EQ(Number::ofUInt64(kUInt64Max).float32Value(), 18'446'744'073'709'551'616.0F);
  EXPECT_EQ(Number::ofUInt64(kUInt64Max).float64Value(), 18'446'744'073'709'551'616.0);
}

TEST(NumberTest, FloatsAreTruncatedTowardZero) {
  for (const auto& [number, expected] : {std::pair{2.9, 2}, {-2.9, -2}, {0.9, 0}, {-0.9, 0}}) {
    EXPECT_EQ(Number::ofFloat64(number).int32Value(), expected);
    EXPECT_EQ(Number::ofFloat32(static_cast<float>(number)).int32Value(), expected);
  }
  EXPECT_EQ(Number::ofFloat64(2.9).uint64Value(), 2u);
}

TEST(NumberTest, FloatsBeyondTheRangeSaturateAndNaNIsZero) {
  EXPECT_EQ(Number::ofFloat64(1e300).int32Value(), kInt32Max);
  EXPECT_EQ(Number::ofFloat64(-1e300).int32Value(), kInt32Min);
  EXPECT_EQ(Number::ofFloat32(kInfinity).int32Value(), kInt32Max);
  EXPECT_EQ(Number::ofFloat32(-kInfinity).uint64Value(), 0u);
  EXPECT_EQ(Number::ofFloat32(kInfinity).uint64Value(), kUInt64Max);
  EXPECT_EQ(Number::ofFloat32(kInfinity).int64Value(), kInt64Max);
  EXPECT_EQ(Number::ofFloat32(-kInfinity).int64Value(), kInt64Min);
  EXPECT_EQ(Number::ofFloat32(kNaN).int32Value(), 0);
  EXPECT_EQ(Number::ofFloat64(kNaN).uint64Value(), 0u);
}

}  // namespace
}  // namespace halvermonte::test
