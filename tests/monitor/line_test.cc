#include "monitor/Line.hpp"

#include <gtest/gtest.h>

namespace halvermonte {
namespace {

TEST(Cells, WideCharactersCountTwiceAndCombiningOnesNot) {
  EXPECT_EQ(cells("abc"), 3U);
  EXPECT_EQ(cells("°é"), 2U);
  EXPECT_EQ(cells("日本"), 4U);
  EXPECT_EQ(cells("e\u0301"), 1U);
  EXPECT_EQ(cells("\xFF"), 1U);
  EXPECT_EQ(cells(Line{{"ab"}, {"日"}}), 4U);
}

TEST(Alignment, TakesExactlyTheWidth) {
  EXPECT_EQ(leftAligned("ab", 4), "ab  ");
  EXPECT_EQ(leftAligned("abcdef", 4), "abcd");
  EXPECT_EQ(leftAligned("日本", 3), "日 ") << "half a wide character does not fit";
  EXPECT_EQ(rightAligned("47 °C", 7), "  47 °C");
  EXPECT_EQ(rightAligned("12345", 3), "12345") << "figures are never cut";
}

TEST(Cut, KeepsWhatFitsAndItsInk) {
  const Line line = {{"abc", Ink::strong}, {"日本", Ink::hot}, {"z"}};
  EXPECT_EQ(rendered(cut(line, 8), false), "abc日本z");
  EXPECT_EQ(rendered(cut(line, 6), true), "\033[1mabc\033[0m\033[31m日\033[0m");
  EXPECT_EQ(rendered(cut(line, 2), false), "ab");
  EXPECT_EQ(rendered(cut(line, 0), false), "");
}

TEST(Printable, ControlCharactersNeverReachTheTerminal) {
  EXPECT_EQ(printable("a\033[2Jb\n\x7F\u009B", true), "a?[2Jb???");
  EXPECT_EQ(printable("é\xFF", true), "é\uFFFD");
}

TEST(Printable, NeitherDoCharactersThatHideOrReorderOthers) {
  EXPECT_EQ(printable("a\u202Eb\u2066c\u2069d", true), "a?b?c?d");
  EXPECT_EQ(printable("\u200B\u200F\u2028\u2029\uFEFF\U000E0041", true), "??????");
  EXPECT_EQ(printable("\u00A0\u2010\u2070\uFFFD\u4E00\U0001F600", true),
            "\u00A0\u2010\u2070\uFFFD\u4E00\U0001F600");
}

TEST(Printable, IsAsciiWithoutUnicode) { EXPECT_EQ(printable("Café 日\xFF", false), "Caf? ??"); }

TEST(Rendered, ColoursOnlyIfAskedAndEndsWithoutBlanks) {
  const Line line = {{"hot", Ink::hot}, {"  "}};
  EXPECT_EQ(rendered(line, true), "\033[31mhot\033[0m");
  EXPECT_EQ(rendered(line, false), "hot");
}

}  // namespace
}  // namespace halvermonte
