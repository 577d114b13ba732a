#include "monitor/exporter/CredentialChecks.hpp"

#include <gmock/gmock.h>

#include <cstddef>
#include <future>
#include <string>
#include <thread>

#include "tests/monitor/exporter/PasswordFile.hpp"

namespace halvermonte::test {
namespace {

class CredentialChecksTest : public ::testing::Test {
 protected:
  bool check(const std::string& user, const std::string& password) {
    std::promise<bool> result;
    checks.start({user, password}, [&result](bool areRight) { result.set_value(areRight); });
    return result.get_future().get();
  }

  const PasswordFile file{"ann:" + hashOf("one") + "\nben:" + hashOf("two") + "\n"};
  CredentialChecks checks{Users(file.path())};
};

TEST_F(CredentialChecksTest, RightOnesAreRemembered) {
  EXPECT_FALSE(checks.remember({"ann", "one"}));
  EXPECT_TRUE(check("ann", "one"));
  EXPECT_TRUE(checks.remember({"ann", "one"}));
  EXPECT_FALSE(checks.remember({"ann", "two"}));
  EXPECT_FALSE(checks.remember({"ben", "one"}));
  EXPECT_FALSE(checks.remember({"annone", ""}));
  EXPECT_TRUE(check("ann", "one"));
}

TEST_F(CredentialChecksTest, WrongOnesAreNot) {
  EXPECT_FALSE(check("ann", "two"));
  EXPECT_FALSE(check("cleo", "one"));
  EXPECT_FALSE(checks.remember({"ann", "two"}));
  EXPECT_FALSE(checks.remember({"cleo", "one"}));
}

TEST_F(CredentialChecksTest, OnlySoManyMayWait) {
  std::promise<void> mayGoOn;
  std::promise<void> isBusy;
  checks.start({"ann", "one"}, [&, gate = mayGoOn.get_future().share()](bool) {
    isBusy.set_value();
    gate.wait();
  });
  isBusy.get_future().wait();
  for (size_t i = 0; i < CredentialChecks::kMostWaiting; ++i) {
    EXPECT_TRUE(checks.haveRoom());
    checks.start({"ann", "one"}, [](bool areRight) { EXPECT_TRUE(areRight); });
  }
  EXPECT_FALSE(checks.haveRoom());
  mayGoOn.set_value();
  EXPECT_TRUE(check("ben", "two"));
  EXPECT_TRUE(checks.haveRoom());
}

TEST_F(CredentialChecksTest, ThoseThatWaitAtTheEndAreNotRight) {
  std::promise<void> isBusy, mayGoOn;
  checks.start({"ann", "one"}, [&, gate = mayGoOn.get_future().share()](bool) {
    isBusy.set_value();
    gate.wait();
  });
  isBusy.get_future().wait();
  std::promise<bool> last;
  checks.start({"ann", "one"}, [&last](bool areRight) { last.set_value(areRight); });
  std::thread closing([this] { checks.close(); });
  while (checks.haveRoom()) std::this_thread::yield();
  mayGoOn.set_value();
  closing.join();
  EXPECT_FALSE(last.get_future().get());
  EXPECT_FALSE(check("ann", "one"));
}

}  // namespace
}  // namespace halvermonte::test
