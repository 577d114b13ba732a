#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "halvermonte/CountTexts.hpp"
#include "platform/Foundation.hpp"

namespace halvermonte::test {
namespace {

using foundation::ByteCountStyle;
using foundation::byteCountText;

struct Shown {
  int64_t bytes;
  const char* text;
};

constexpr Shown kShown[] = {
    {0, "Zero KB"},
    {1, "1 byte"},
    {2, "2 bytes"},
    {999, "999 bytes"},
    {1'000, "1 KB"},
    {1'001, "1 KB"},
    {1'499, "1 KB"},
    {1'500, "2 KB"},  // half to even
    {1'501, "2 KB"},
    {2'500, "2 KB"},
    {2'501, "3 KB"},
    {50'000, "50 KB"},
    {100'000, "100 KB"},
    {999'499, "999 KB"},
    {999'500, "1 MB"},
    {999'999, "1 MB"},
    {1'000'000, "1 MB"},
    {1'049'999, "1 MB"},
    {1'050'000, "1 MB"},  // 1.05: half to even
    {1'050'001, "1.1 MB"},
    {1'150'000, "1.2 MB"},
    {1'250'000, "1.2 MB"},
    {1'500'000, "1.5 MB"},
    {10'000'000, "10 MB"},
    {12'345'678, "12.3 MB"},
    {999'949'999, "999.9 MB"},
    {999'950'000, "1 GB"},
    {1'000'000'000, "1 GB"},
    {1'005'000'000, "1 GB"},
    {1'005'000'001, "1.01 GB"},
    {1'015'000'000, "1.02 GB"},
    {1'100'000'000, "1.1 GB"},
    {1'234'000'000, "1.23 GB"},
    {2'000'000'000, "2 GB"},
    {999'994'999'999, "999.99 GB"},
    {999'995'000'000, "1 TB"},
    {1'000'000'000'000, "1 TB"},
    {1'234'567'890'123, "1.23 TB"},
    {999'994'999'999'999, "999.99 TB"},
    {999'995'000'000'000, "1 PB"},
    {1'230'000'000'000'000, "1.23 PB"},
    {999'994'999'999'999'999, "999.99 PB"},
    {999'995'000'000'000'000, "1 EB"},
    {1'000'000'000'000'000'000, "1 EB"},
    {1'010'000'000'000'000'000, "1.01 EB"},
    {std::numeric_limits<int64_t>::max(), "9.22 EB"},
    {std::numeric_limits<int64_t>::min(), "-9.22 EB"},
    {-1, "-1 byte"},
    {-999, "-999 bytes"},
    {-1'500, "-2 KB"},
    {-2'500, "-2 KB"},
    {-999'999, "-1 MB"},
};

TEST(ByteCountTest, CountsAreShownInThousands) {
  for (const Shown& row : kShown) {
    EXPECT_EQ(byteCountText(row.bytes, ByteCountStyle::file), row.text) << row.bytes;
    EXPECT_EQ(byteCountText(row.bytes, ByteCountStyle::decimal), row.text) << row.bytes;
  }
}

/// Wide enough for a count in any unit's smallest steps.
__extension__ typedef __int128 Wide;

/// The nearest number with so many decimals, found by trying: the halves' neighbour whose last
/// digit is even.
Wide nearestSteps(Wide bytes, Wide unit, int decimals) {
  Wide one = 1;
  for (int i = 0; i < decimals; ++i) one *= 10;
  const Wide below = bytes * one / unit;
  const Wide toBelow = bytes * one - below * unit;
  const Wide toAbove = (below + 1) * unit - bytes * one;
  if (toBelow == toAbove) return below % 2 == 0 ? below : below + 1;
  return toBelow < toAbove ? below : below + 1;
}

std::string literalText(uint64_t bytes) {
  if (bytes < 1000) {
    return bytes == 0 ? "Zero KB" : std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
  }
  constexpr std::pair<const char*, int> kUnits[] = {{" KB", 0}, {" MB", 1}, {" GB", 2},
                                                    {" TB", 2}, {" PB", 2}, {" EB", 2}};
  Wide unit = 1;
  for (const auto& [name, decimals] : kUnits) {
    unit *= 1000;
    const Wide steps = nearestSteps(bytes, unit, decimals);
    std::string digits = std::to_string(static_cast<int64_t>(steps));
    if (decimals > 0) {
      digits.insert(digits.size() - static_cast<size_t>(decimals), ".");
      while (digits.back() == '0') digits.pop_back();
      if (digits.back() == '.') digits.pop_back();
    }
    if (std::stold(digits) < 1000.0L) return digits + name;
  }
  return "none";
}

void expectLiterally(int64_t bytes) {
  const uint64_t magnitude =
      bytes < 0 ? 0 - static_cast<uint64_t>(bytes) : static_cast<uint64_t>(bytes);
  ASSERT_EQ(byteCountText(bytes, ByteCountStyle::file),
            (bytes < 0 ? "-" : "") + literalText(magnitude))
      << bytes;
}

TEST(ByteCountTest, AllSmallCountsAndThoseAroundEveryRoundNumberAreShownLiterally) {
  for (int64_t bytes = -20'000; bytes <= 20'000; ++bytes) expectLiterally(bytes);
  for (int64_t power = 100; power <= 100'000'000'000'000'000; power *= 10) {
    for (int64_t factor = 1; factor < 10; ++factor) {
      for (const int64_t step : {int64_t{0}, power / 2, power / 20, power / 200, power / 2000}) {
        for (int64_t off = -2; off <= 2; ++off) {
          expectLiterally(power * factor + step + off);
          expectLiterally(power * factor - step + off);
          expectLiterally(-(power * factor + step + off));
        }
      }
    }
  }
}

TEST(ByteCountTest, RandomCountsAreShownLiterally) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 100'000; ++i) {
    expectLiterally(static_cast<int64_t>(random() >> random() % 64));
  }
}

TEST(ByteCountTest, OfUnsignedBytesHasNoSign) {
  EXPECT_EQ(halvermonte::byteCountText(1'500'000), "1.5 MB");
  EXPECT_EQ(halvermonte::byteCountText(UINT64_MAX), "18.45 EB");
}

}  // namespace
}  // namespace halvermonte::test
