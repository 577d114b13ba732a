// More fans than a pass can name end the process, so machine files with them are refused.
#include <gtest/gtest.h>

#include <string>

#include "tests/simulated/MachineTexts.hpp"

namespace halvermonte {
namespace {

std::string fans(const std::string& answer) { return tickOfKeys(R"("FNum": )" + answer); }

std::string controller(const std::string& members) { return R"({"smc": {)" + members + "}}"; }

const std::string kEleven = R"({"type": "ui8 ", "value": 11})";

/// The refusal of an answer that counts the fans, without the place; "" if it is valid.
std::string refusalOfCount(const std::string& answer) {
  const std::string line = refusalOf(machineText(fans(answer)));
  const std::string start = "sample.json: /ticks/0/smc/keys/FNum: expected ";
  return line.starts_with(start) ? line.substr(start.size()) : line;
}

const std::string kTooMany = "at most 10 fans, as an eleventh ends the process";

TEST(FanLimit, TenFansAreValidAndElevenAreNot) {
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "value": 10})"), "");
  EXPECT_EQ(refusalOfCount(kEleven), kTooMany);
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "value": 255})"), kTooMany);
}

TEST(FanLimit, CountIsWhatTheEngineMakesOfSizeAndBytes) {
  EXPECT_EQ(refusalOfCount(R"({"type": "ui16", "value": 256})"), "") << "the last byte counts";
  EXPECT_EQ(refusalOfCount(R"({"type": "ui16", "value": 11})"), kTooMany);
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "bytes": "05FFFFFF05"})"), "");
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "bytes": "05FFFFFF06"})"), kTooMany) << "added";
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "bytes": "0bFF", "size": 1})"), kTooMany);
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "bytes": "0bFF", "size": 0})"), "");
  EXPECT_EQ(refusalOfCount(R"({"type": "ui8 ", "bytes": "0bFF", "size": 2147483648})"), "")
      << "a negative size";
  EXPECT_EQ(refusalOfCount(R"({"type": "flt ", "value": 2})"), kTooMany) << "its last byte is 0x40";
}

TEST(FanLimit, AnswerThatIsNotReadCountsNothing) {
  for (const char* member : {"infoCode", "readCode", "infoResult", "readResult"}) {
    EXPECT_EQ(
        refusalOfCount(R"({"type": "ui8 ", "value": 11, ")" + std::string(member) + R"(": 1})"), "")
        << member;
  }
}

TEST(FanLimit, WaveIsJudgedByAllThatItReaches) {
  const auto wave = [](const std::string& type, const std::string& course,
                       const std::string& size = "") {
    return refusalOfCount(R"({"type": ")" + type + R"(", "wave": {"period": 60, )" + course + "}" +
                          size + "}");
  };
  const std::string from0To4 = R"("mean": 2, "amplitude": 2)";
  const std::string from18To22 = R"("mean": 20, "amplitude": -2)";
  EXPECT_EQ(wave("ui8 ", R"("mean": 8, "amplitude": 2)"), "");
  EXPECT_EQ(wave("ui8 ", R"("mean": 8.5, "amplitude": 2)"), kTooMany);
  EXPECT_EQ(wave("ui16", R"("mean": 260, "amplitude": 4)"), "") << "a last byte of 0 to 8";
  EXPECT_EQ(wave("ui16", R"("mean": 384, "amplitude": 128)"), kTooMany) << "255 on its way";
  EXPECT_EQ(wave("ui16", R"("mean": 384, "amplitude": 128)", R"(, "size": 1)"), "") << "1 or 2";
  EXPECT_EQ(wave("ui8 ", from18To22, R"(, "size": 2)"), "") << "the second byte, which is 0";
  EXPECT_EQ(wave("ui8 ", from18To22, R"(, "size": 5)"), kTooMany) << "the first and the fifth";
  EXPECT_EQ(wave("ui16", R"("mean": 384, "amplitude": 128)", R"(, "size": 2147483650)"), "")
      << "a negative size";
  EXPECT_EQ(wave("flt ", from0To4), kTooMany) << "up to 0x40";
  EXPECT_EQ(wave("flt ", R"("mean": 1, "amplitude": 1)", R"(, "size": 3)"), kTooMany)
      << "0 at both ends";
}

TEST(FanLimit, PlaceIsThatOfTheAnswerInWhateverTickAndSpelling) {
  EXPECT_EQ(refusalOf(machineText("{}, {}, " + fans(kEleven))),
            "sample.json: /ticks/2/smc/keys/FNum: expected " + kTooMany);
  EXPECT_EQ(refusalOf(machineText(tickOfKeys(R"("TC0P": null, "hex:464E756d": )" + kEleven))),
            "sample.json: /ticks/0/smc/keys/hex:464E756d: expected " + kTooMany);
}

TEST(FanLimit, ControllerThatNoPassOpensMayCountAnything) {
  const std::string keys = R"("keys": {"FNum": )" + kEleven + "}";
  for (const char* state : {"missing", "unmatched", "refused"}) {
    const std::string closed = controller(R"("service": ")" + std::string(state) + R"(", )" + keys);
    EXPECT_EQ(refusalOf(machineText(closed)), "") << state;
    EXPECT_EQ(refusalOf(machineText(closed + ", {}, " + fans("null"))), "") << state;
    EXPECT_EQ(refusalOf(machineText(closed + ", {}, " + controller(R"("service": "present")"))),
              "sample.json: /ticks/0/smc/keys/FNum: expected " + kTooMany)
        << state;
  }
  EXPECT_EQ(refusalOf(machineText(controller(R"("service": "refused", "code": 0, )" + keys))),
            "sample.json: /ticks/0/smc/keys/FNum: expected " + kTooMany)
      << "it opens after all";
}

}  // namespace
}  // namespace halvermonte
