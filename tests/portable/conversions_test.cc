#include "platform/Conversions.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace halvermonte::test {
namespace {

/// The rule word for word, in a form that holds every value of both sides exactly.
template <class Target, class Source>
Target literally(Source value) {
  const auto exact = static_cast<long double>(value);
  if (std::isnan(exact)) return 0;
  const long double whole = std::trunc(exact);
  if (whole > static_cast<long double>(std::numeric_limits<Target>::max())) {
    return std::numeric_limits<Target>::max();
  }
  if (whole < static_cast<long double>(std::numeric_limits<Target>::min())) {
    return std::numeric_limits<Target>::min();
  }
  return static_cast<Target>(whole);
}

template <class Pair>
class ConversionsTest : public ::testing::Test {};

template <class TargetType, class SourceType>
struct Conversion {
  using Target = TargetType;
  using Source = SourceType;
};
using Conversions = ::testing::Types<Conversion<int32_t, float>, Conversion<int32_t, double>,
                                     Conversion<int64_t, float>, Conversion<int64_t, double>,
                                     Conversion<uint64_t, float>, Conversion<uint64_t, double>>;
TYPED_TEST_SUITE(ConversionsTest, Conversions);

TYPED_TEST(ConversionsTest, EveryFloatAroundALimitIsTruncatedOrSaturates) {
  using Target = typename TypeParam::Target;
  using Source = typename TypeParam::Source;
  constexpr int kNeighbours = 2000;
  for (int exponent = -2; exponent <= 66; ++exponent) {
    for (const Source sign : {Source{1}, Source{-1}}) {
      const Source limit = sign * std::ldexp(Source{1}, exponent);
      Source up = limit;
      Source down = limit;
      for (int step = 0; step < kNeighbours; ++step) {
        ASSERT_EQ(truncated<Target>(up), (literally<Target>(up))) << up;
        ASSERT_EQ(truncated<Target>(down), (literally<Target>(down))) << down;
        up = std::nextafter(up, std::numeric_limits<Source>::infinity());
        down = std::nextafter(down, -std::numeric_limits<Source>::infinity());
      }
    }
  }
}

TYPED_TEST(ConversionsTest, OddFloatsHaveTheirPlace) {
  using Target = typename TypeParam::Target;
  using Source = typename TypeParam::Source;
  using Limits = std::numeric_limits<Source>;
  for (const Source value : {Limits::quiet_NaN(), -Limits::quiet_NaN(), Limits::infinity(),
                             -Limits::infinity(), Limits::max(), Limits::lowest(), Limits::min(),
                             Limits::denorm_min(), -Limits::denorm_min(), Source{0}, -Source{0}}) {
    EXPECT_EQ(truncated<Target>(value), (literally<Target>(value))) << value;
  }
}

TEST(FloatConversionsTest, FloatsOfAllMagnitudesAreTruncatedOrSaturate) {
  constexpr uint64_t kStride = 4099;
  for (uint64_t bits = 0; bits <= 0xFFFFFFFF; bits += kStride) {
    const auto value = std::bit_cast<float>(static_cast<uint32_t>(bits));
    ASSERT_EQ(truncated<int32_t>(value), literally<int32_t>(value)) << value;
    ASSERT_EQ(truncated<int64_t>(value), literally<int64_t>(value)) << value;
    ASSERT_EQ(truncated<uint64_t>(value), literally<uint64_t>(value)) << value;
  }
}

}  // namespace
}  // namespace halvermonte::test
