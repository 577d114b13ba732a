#include <gtest/gtest.h>

#include <cstring>

#include "halvermonte/SMC.h"

namespace {

TEST(StringToCode, PacksTheFirstCharacterHighest) {
  EXPECT_EQ(_strtoul("FNum", 4, 16), 0x464E756DU);
  EXPECT_EQ(_strtoul("sp78", 4, 16), 0x73703738U);
  EXPECT_EQ(_strtoul("ABCD", 2, 16), 0x4142U) << "no more than size characters";
}

TEST(StringToCode, IsNothingWithoutCharacters) {
  EXPECT_EQ(_strtoul("FNum", 0, 16), 0U);
  EXPECT_EQ(_strtoul("FNum", -1, 16), 0U);
  EXPECT_EQ(_strtoul("FNum", 0, 10), 0U);
}

TEST(StringToCode, CarriesOnesFromCharactersBeyondASCII) {
  EXPECT_EQ(_strtoul("\x80", 1, 16), 0xFFFFFF80U);
  EXPECT_EQ(_strtoul("A\xFF", 2, 16), 0x4100U + 0xFFFFFFFFU);
  EXPECT_EQ(_strtoul("Tp0\xE9", 4, 16), 0x54703000U + 0xFFFFFFE9U);
}

TEST(StringToCode, KeepsOnlyTheLastCharacterInOtherBases) {
  EXPECT_EQ(_strtoul("\x00\x02", 2, 10), 2U);
  EXPECT_EQ(_strtoul("\x01\x02", 2, 10), 2U);
  EXPECT_EQ(_strtoul("\x7F\xFF", 2, 8), 0xFFU) << "its low 8 bits";
}

TEST(StringToCode, TakesShiftsModulo32) {
  EXPECT_EQ(_strtoul("\x01\x00\x00\x00\x02", 5, 10), 3U) << "the first of five is not shifted";
  EXPECT_EQ(_strtoul("ABCDE", 5, 16), 0x42434445U + 0x41U);
}

TEST(CodeToString, WritesFourCharactersAndNul) {
  char text[6] = {'x', 'x', 'x', 'x', 'x', 'x'};
  EXPECT_EQ(_ultostr(text, 0x73703738), 4);
  EXPECT_EQ(std::memcmp(text, "sp78\0x", 6), 0);
}

TEST(CodeToString, WritesEveryByteAsItIs) {
  char text[5];
  EXPECT_EQ(_ultostr(text, 0x00FF0041), 4);
  EXPECT_EQ(std::memcmp(text, "\0\xFF\0A\0", 5), 0);
}

TEST(BytesToFloat, TakesThemInTheComputersOrder) {
  const float number = 36.625F;
  unsigned char bytes[5] = {};
  std::memcpy(bytes + 1, &number, sizeof number);  // at any address
  EXPECT_EQ(_flttof(bytes + 1), 36.625F);
}

}  // namespace
