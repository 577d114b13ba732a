#include "monitor/Signals.hpp"

#include <gmock/gmock.h>

#include <chrono>

namespace halvermonte::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

TEST(PartOfWait, KernelThatIsLateByAThousandthDelaysALongWaitByMicroseconds) {
  for (const nanoseconds wait : {nanoseconds(1ms), nanoseconds(50ms), nanoseconds(1s),
                                 nanoseconds(24h), nanoseconds(1'000'000s)}) {
    nanoseconds left = wait;
    int parts = 0;
    for (; left > 0ns; ++parts) {
      const nanoseconds part = partOfWait(left);
      ASSERT_GT(part, 0ns);
      left -= part + part / 1000;
    }
    EXPECT_GE(left, -10us) << wait.count();
    EXPECT_LE(parts, 5) << wait.count();
  }
}

TEST(PartOfWait, NoneIsLeftWhenTheTimeIsOver) { EXPECT_EQ(partOfWait(-1s), 0ns); }

}  // namespace
}  // namespace halvermonte::test
