// How a Mac's machine asks the controller.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "halvermonte/FourCharacterCode.hpp"
#include "platform/portable/LiveCounters.hpp"
#include "tests/mac/Sandwich.hpp"
#include "tests/support/ListingMachine.hpp"
#include "tests/support/PlatformCalls.hpp"
#include "tests/support/TestMachine.hpp"

namespace halvermonte::test {
namespace {

class MacControllerTest : public testing::Test {
 protected:
  MacControllerTest() { below.keys["TC0P"] = sp78(50); }

  auto timesAsked(const std::string& question) { return std::ranges::count(below.asked, question); }

  static constexpr uint32_t kKey = fourCharacterCode("TC0P");

  TestMachine below;
  Sandwich mac{below};
};

TEST_F(MacControllerTest, OneConnectionServesAllWhoHaveItOpen) {
  EXPECT_EQ(mac.openSMC(), kCodeSuccess);
  EXPECT_EQ(mac.openSMC(), kCodeSuccess);
  EXPECT_EQ(timesAsked("open"), 1);
  mac.closeSMC();
  EXPECT_EQ(timesAsked("close"), 0);
  mac.closeSMC();
  EXPECT_EQ(timesAsked("close"), 1);
}

TEST_F(MacControllerTest, AQuestionWithoutAConnectionOpensOneForItself) {
  const size_t handles = portable::liveHandles();
  EXPECT_EQ(mac.smcKeyInfo(kKey).dataSize, 2U);
  EXPECT_EQ(mac.smcKeyBytes(kKey).bytes[0], 50);
  EXPECT_EQ(timesAsked("open"), 2);
  EXPECT_EQ(timesAsked("close"), 2);
  EXPECT_EQ(portable::liveHandles(), handles);
}

TEST_F(MacControllerTest, DataIsAskedForWithTheSizeOfItsOwnKey) {
  below.keys["FNum"] = ui8(3);
  mac.openSMC();
  EXPECT_EQ(mac.smcKeyInfo(kKey).dataSize, 2U);
  EXPECT_EQ(mac.smcKeyInfo(fourCharacterCode("FNum")).dataSize, 1U);
  EXPECT_EQ(mac.smcKeyBytes(kKey).bytes[0], 50);
  mac.closeSMC();
}

TEST_F(MacControllerTest, AskingForWideCallsDoesNotComeBetweenSizeAndData) {
  mac.openSMC();
  mac.smcKeyInfo(kKey);
  EXPECT_TRUE(mac.answersWideCalls());
  EXPECT_EQ(mac.smcKeyBytes(kKey).bytes[0], 50);
  mac.closeSMC();
}

TEST_F(MacControllerTest, WideCallsAreTriedOnceForEachConnection) {
  mac.openSMC();
  EXPECT_TRUE(mac.answersWideCalls());
  below.wideCalls = false;
  EXPECT_TRUE(mac.answersWideCalls());
  mac.closeSMC();
  mac.openSMC();
  EXPECT_FALSE(mac.answersWideCalls());
  mac.closeSMC();
}

TEST_F(MacControllerTest, AControllerThatCannotBeOpenedAnswersWithItsCode) {
  below.openCode = 0xE00002C1;
  EXPECT_EQ(mac.smcKeyInfo(kKey).code, 0xE00002C1);
  EXPECT_EQ(mac.smcKeyBytes(kKey).code, 0xE00002C1);
  EXPECT_TRUE(mac.inventory().empty());
  below.controller.present = false;
  EXPECT_EQ(mac.openSMC(), kCodeError);
}

/// Its controller counts them, too.
struct CountingMachine : ListingMachine {
 private:
  ListedKeys listed_;
};

TEST(MacInventoryTest, HasEveryKeyThatTheControllerCounts) {
  CountingMachine below;
  below.keys["TC0P"] = sp78(50);
  below.keys["zETM"] = flt(1);
  Sandwich mac(below);
  EXPECT_TRUE(keysOf(mac).empty());
  below.keys["#KEY"] = rawKey("ui32", {0, 0, 0, 3});
  EXPECT_EQ(keysOf(mac), (std::vector<std::string>{"#KEY", "TC0P", "zETM"}));
  below.keys["#KEY"] = rawKey("ui32", {0, 0, 0, 2});
  EXPECT_EQ(keysOf(mac), (std::vector<std::string>{"#KEY", "TC0P"}));
}

TEST(MacInventoryTest, TakesACountInEitherByteOrder) {
  CountingMachine below;
  below.keys["TC0P"] = sp78(50);
  below.keys["#KEY"] = rawKey("ui32", {1, 0, 0, 0});
  Sandwich mac(below);
  EXPECT_EQ(keysOf(mac), (std::vector<std::string>{"#KEY"}));
}

TEST(MacInventoryTest, PassesIndexesWithoutAKeyAndCountsOfAnotherSize) {
  CountingMachine below;
  below.keys["TC0P"] = sp78(50);
  below.keys["#KEY"] = rawKey("ui32", {0, 0, 0, 9});
  Sandwich mac(below);
  EXPECT_EQ(keysOf(mac), (std::vector<std::string>{"#KEY", "TC0P"}));
  below.keys["#KEY"] = rawKey("ui16", {0, 2});
  EXPECT_TRUE(keysOf(mac).empty());
}

}  // namespace
}  // namespace halvermonte::test
