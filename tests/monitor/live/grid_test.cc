#include "monitor/live/Grid.hpp"

#include <gmock/gmock.h>

namespace halvermonte {
namespace {

TEST(Grid, RowsAreLinesWithoutBlanksAtTheirEnds) {
  Grid grid({5, 2});
  EXPECT_EQ(grid.put(0, 1, "ab "), 4U);
  EXPECT_EQ(grid.text(), " ab\n\n");
}

TEST(Grid, TextEndsAtItsEndAndAtTheGrids) {
  Grid grid({5, 1});
  EXPECT_EQ(grid.put(0, 0, "abc", Look::plain, 2), 2U);
  EXPECT_EQ(grid.put(0, 3, "xyz"), 5U);
  EXPECT_EQ(grid.text(), "ab xy\n");
}

TEST(Grid, TextBelowTheLastRowIsLeftOut) {
  Grid grid({5, 1});
  grid.put(1, 0, "abc");
  EXPECT_EQ(grid.text(), "\n");
}

TEST(Grid, TextOnTheRightEndsThere) {
  Grid grid({5, 1});
  grid.putRight(0, 5, "°C");
  EXPECT_EQ(grid.text(), "   °C\n");
}

TEST(Grid, WideCharacterTakesTwoCellsOrNone) {
  Grid grid({3, 1});
  EXPECT_EQ(grid.put(0, 0, "温温"), 2U);
  EXPECT_EQ(grid.at(0, 0).text, "温");
  EXPECT_EQ(grid.at(0, 1).text, "");
  EXPECT_EQ(grid.text(), "温\n");
}

TEST(Grid, CombiningCharacterStaysWithTheOneBefore) {
  Grid grid({2, 1});
  grid.put(0, 0, "e\u0301x");
  EXPECT_EQ(grid.at(0, 0).text, "e\u0301");
  EXPECT_EQ(grid.at(0, 1).text, "x");
}

TEST(Grid, CombiningCharacterAtTheStartHasNoCell) {
  Grid grid({2, 1});
  EXPECT_EQ(grid.put(0, 0, "\u0301x"), 1U);
  EXPECT_EQ(grid.text(), "x\n");
}

TEST(Grid, ReversesCellsAlone) {
  Grid grid({3, 1});
  grid.put(0, 0, "abc", Look::hot);
  grid.reverse(0, 1, 9);
  EXPECT_FALSE(grid.at(0, 0).isReversed);
  EXPECT_TRUE(grid.at(0, 1).isReversed);
  EXPECT_TRUE(grid.at(0, 2).isReversed);
  EXPECT_EQ(grid.at(0, 2).look, Look::hot);
}

}  // namespace
}  // namespace halvermonte
