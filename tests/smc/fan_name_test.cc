#include <cstring>
#include <string>
#include <vector>

#include "platform/Processor.hpp"
#include "tests/smc/Connection.hpp"

namespace halvermonte::test {
namespace {

class SMCGetFanNameTest : public ConnectionTest {
 protected:
  /// The name, or "(none)" if the call says that none was read.
  std::string name(KeyAnswer answer) {
    machine.keys["F0ID"] = std::move(answer);
    char buffer[14] = {};
    buffer[12] = '!';  // never written
    const int read = SMCGetFanName(0, buffer, conn);
    EXPECT_EQ(buffer[12], '!');
    buffer[12] = '\0';
    return read == 1 ? buffer : "(none)";
  }
};

TEST_F(SMCGetFanNameTest, EndsAtTheFirstSpace) {
  EXPECT_EQ(name(fanDescriptor("Left side")), "Left");
  EXPECT_EQ(name(fanDescriptor("Exhaust")), "Exhaust");
  EXPECT_EQ(name(fanDescriptor(" Left")), "") << "at once";
}

TEST_F(SMCGetFanNameTest, HasAllTwelveCharactersIfNoneIsASpace) {
  EXPECT_EQ(name(fanDescriptor("TwelveLetter")), "TwelveLetter");
}

TEST_F(SMCGetFanNameTest, LeavesWhatStandsBehindTheName) {
  machine.keys["F0ID"] = fanDescriptor("PCI");
  char buffer[13] = "xxxxxxxxxxxx";
  EXPECT_EQ(SMCGetFanName(0, buffer, conn), 1);
  EXPECT_STREQ(buffer, "PCIxxxxxxxxx") << "no NUL is written";
}

TEST_F(SMCGetFanNameTest, IsNoneInAnotherTypeOrSize) {
  EXPECT_EQ(name(fanDescriptor("Left").withSize(15)), "(none)");
  EXPECT_EQ(name(fanDescriptor("Left").withSize(17)), "(none)");
  EXPECT_EQ(name(rawKey("{fdx", std::vector<uint8_t>(16, 'a'))), "(none)");
  EXPECT_EQ(name(rawKey("{fds", std::vector<uint8_t>(16, 'a'))), "aaaaaaaaaaaa");
}

TEST_F(SMCGetFanNameTest, IsNoneWithoutTheKey) {
  char buffer[13] = {};
  EXPECT_EQ(SMCGetFanName(1, buffer, conn), 0);
}

TEST_F(SMCGetFanNameTest, JudgesOnlyTheLowBitsOfTheFirstCode) {
  EXPECT_EQ(name(fanDescriptor("Left").withInfoCode(kCodeWithLowBits)), "(none)");
  // The reply stays empty then, so its size is 0.
  EXPECT_EQ(name(fanDescriptor("Left").withInfoCode(kCodeWithoutLowBits)), "(none)");
  EXPECT_EQ(name(fanDescriptor("Left").withInfoResult(0x84)), "(none)");
}

TEST_F(SMCGetFanNameTest, AsksForNoBytesAfterAFirstStepThatFails) {
  const std::vector<std::string> firstStepAlone = {"info F0ID"};
  machine.asked.clear();
  EXPECT_EQ(name(fanDescriptor("Left").withInfoCode(kCodeWithLowBits)), "(none)");
  EXPECT_EQ(machine.asked, firstStepAlone) << "by its code";
  machine.asked.clear();
  EXPECT_EQ(name(fanDescriptor("Left").withInfoResult(0x84)), "(none)");
  EXPECT_EQ(machine.asked, firstStepAlone) << "by its result";
}

TEST_F(SMCGetFanNameTest, JudgesOnlyTheLowBitsOfTheSecondCode) {
  EXPECT_EQ(name(fanDescriptor("Left").withReadCode(kCodeWithLowBits)), "(none)");
  EXPECT_EQ(name(fanDescriptor("Left").withReadCode(kCodeWithoutLowBits)), "")
      << "the reply to the first step stays, whose bytes are 0";
}

TEST_F(SMCGetFanNameTest, IsEmptyIfOnlyTheBytesWereRefused) {
  EXPECT_EQ(name(fanDescriptor("Left").withReadResult(0x84)), "");
}

TEST_F(SMCGetFanNameTest, IsAskedInTheWideRecordOnArm64Alone) {
  machine.wideCalls = false;
  EXPECT_EQ(name(fanDescriptor("Left")), kProcessor == Processor::arm64 ? "(none)" : "Left");
}

}  // namespace
}  // namespace halvermonte::test
