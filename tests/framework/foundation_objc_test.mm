// What only a platform with Objective-C exceptions has, and the pool that foundation_test.cc needs.
#include "platform/Foundation.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "tests/framework/Pool.hpp"

namespace {

using halvermonte::foundation::reasonRaisedBy;

/// A pool for the tests that know nothing of pools.
class PoolForEachTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { pool_ = std::make_unique<Pool>(); }
  void OnTestEnd(const testing::TestInfo& /*test*/) override { pool_.reset(); }

  std::unique_ptr<Pool> pool_;
};

size_t openFiles() {
  const std::filesystem::directory_iterator files("/dev/fd");
  return static_cast<size_t>(std::distance(begin(files), end(files)));
}

TEST(CommandTest, LeavesNoFileOpen) {
  halvermonte::foundation::outputOfCommand("true");
  const size_t before = openFiles();
  for (int i = 0; i < 10; ++i) halvermonte::foundation::outputOfCommand("echo");
  EXPECT_EQ(openFiles(), before);
}

TEST(GuardTest, AnswersAnExceptionsReason) {
  EXPECT_EQ(reasonRaisedBy([] { [NSException raise:NSGenericException format:@"gone %d", 1]; }),
            "gone 1");
}

TEST(GuardTest, AnswersAnExceptionWithoutAReason) {
  EXPECT_NE(reasonRaisedBy(
                [] { [[NSException exceptionWithName:@"Bare" reason:nil userInfo:nil] raise]; }),
            std::nullopt);
}

}  // namespace

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  testing::UnitTest::GetInstance()->listeners().Append(new PoolForEachTest);
  return RUN_ALL_TESTS();
}
