#include "monitor/exporter/ServedPass.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>

#include "halvermonte/StatisticsData.hpp"

namespace halvermonte {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Clock = std::chrono::steady_clock;

class ServedPassTest : public ::testing::Test {
 protected:
  ServedPassTest() { readRecord(std::make_shared<StatisticsData>(), view); }

  PassView view;
  ServedPasses passes{std::chrono::duration<double>(2)};
};

TEST_F(ServedPassTest, HoldsThePassInEachFormat) {
  view.number = 3;
  const ServedPass pass = passes.of(view);
  EXPECT_THAT(pass.metrics, HasSubstr("\nhalvermonte_passes_total 1\n"));
  EXPECT_THAT(pass.record, StartsWith(R"({"tick":3,"record":{"hostName":)"));
  EXPECT_THAT(pass.readings, AllOf(HasSubstr(R"("pass":3,)"), HasSubstr(R"("interval":2,)")));
}

TEST_F(ServedPassTest, CountsPassesAndThoseThatEndedEarly) {
  passes.of(view);
  view.exception = "index 3 beyond bounds";
  const ServedPass pass = passes.of(view);
  EXPECT_THAT(pass.metrics, AllOf(HasSubstr("\nhalvermonte_passes_total 2\n"),
                                  HasSubstr("\nhalvermonte_pass_errors_total 1\n")));
}

TEST_F(ServedPassTest, PassThatEndedEarlyKeepsTheTimeOfTheLastGoodOne) {
  view.exception = "index 3 beyond bounds";
  EXPECT_EQ(passes.of(view).lastGood, Clock::time_point());
  view.exception.reset();
  const Clock::time_point before = Clock::now(), good = passes.of(view).lastGood;
  EXPECT_GE(good, before);
  view.exception = "index 3 beyond bounds";
  EXPECT_EQ(passes.of(view).lastGood, good);
}

}  // namespace
}  // namespace halvermonte
