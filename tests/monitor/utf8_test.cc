#include "halvermonte/UTF8.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace halvermonte {
namespace {

using ::testing::ElementsAre;

std::vector<char32_t> codePointsOf(std::string_view text) {
  std::vector<char32_t> codes;
  while (!text.empty()) codes.push_back(takeCodePoint(text).value_or(kReplacementCharacter));
  return codes;
}

TEST(Utf8, SequencesOfEachLengthAreRead) {
  EXPECT_THAT(codePointsOf("a\u00e9\u20ac\U0001F600"), ElementsAre(0x61, 0xE9, 0x20AC, 0x1F600));
  EXPECT_THAT(codePointsOf("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80"),
              ElementsAre(0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000));
  EXPECT_THAT(codePointsOf("\xF4\x8F\xBF\xBF\xED\x9F\xBF\xEE\x80\x80"),
              ElementsAre(0x10FFFF, 0xD7FF, 0xE000));
}

TEST(Utf8, EachBadPlaceIsOneReplacementCharacter) {
  EXPECT_THAT(codePointsOf("a\x80z"), ElementsAre('a', 0xFFFD, 'z'));
  EXPECT_THAT(codePointsOf("\xE2\x82z"), ElementsAre(0xFFFD, 'z')) << "cut short";
  EXPECT_THAT(codePointsOf("\xF0\x9F\x98"), ElementsAre(0xFFFD)) << "cut short at the end";
  EXPECT_THAT(codePointsOf("\xC3\xC3\xA9"), ElementsAre(0xFFFD, 0xE9)) << "a lead after a lead";
}

TEST(Utf8, OverlongFormsSurrogatesAndCodesBeyondUnicodeAreRefusedByteByByte) {
  EXPECT_THAT(codePointsOf("\xC0\xAF"), ElementsAre(0xFFFD, 0xFFFD));
  EXPECT_THAT(codePointsOf("\xE0\x9F\xBF"), ElementsAre(0xFFFD, 0xFFFD, 0xFFFD));
  EXPECT_THAT(codePointsOf("\xED\xA0\x80"), ElementsAre(0xFFFD, 0xFFFD, 0xFFFD));
  EXPECT_THAT(codePointsOf("\xF4\x90\x80\x80"), ElementsAre(0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD));
  EXPECT_THAT(codePointsOf("\xFF"), ElementsAre(0xFFFD));
}

}  // namespace
}  // namespace halvermonte
