#include "linetest/line_analysis.h"

#include <gtest/gtest.h>

#include "linetest/results_table.h"

namespace touch {
namespace {

using Lines = std::vector<std::string>;

TEST(RoundedTwips, GoesToTheEvenNeighbour) {
  const std::pair<float, int> cases[] = {{0.5F, 0},   {1.5F, 2},         {2.51F, 3},
                                         {-1.5F, -2}, {32768.5F, 32768}, {57600, 57600}};
  for (const auto& [position, rounded] : cases)
    EXPECT_EQ(roundedTwips(position), rounded) << position;
}

constexpr int none = -1;

TEST(LineMatcher, MatchesAStartToItsLine) {
  // Round numbers: bands of 100 and 50 twips.
  constexpr TwipsSize round{10240, 5120};
  const GuideLines guides(round);
  const LineMatcher matcher(guides, {100, 50});
  const struct {
    const char* what;
    int x;
    int y;
    int index;
    int widthAfter;
  } cases[] = {
      {"first vertical line, at the top edge", 320, 20, 0, 2},
      {"its band's right edge is outside", 420, 20, none, 1},
      {"just within", 419, 20, 0, 2},
      {"its band's left edge is outside", 220, 20, none, 1},
      {"middle line, past the edge: the horizontal ones are tried, in vain", 5120, 60, 2, 1},
      {"exactly one band from the top counts as the edge", 5120, 50, 2, 2},
      {"exactly one band from the bottom counts as the edge", 5120, 5070, 2, 2},
      {"just less than a band from the bottom", 5120, 5069, 2, 1},
      {"first horizontal line, from the left", 20, 160, 5, 1},
      {"its band's edge is outside", 20, 210, none, 1},
      {"just within", 20, 209, 5, 1},
      {"both match: the horizontal line wins", 320, 160, 5, 2},
      {"neither", 1500, 60, none, 1},
  };
  for (const auto& c : cases) {
    const Matching matching = matcher.postest(c.x, c.y, 2);
    ASSERT_EQ(matching.line.has_value(), c.index != none) << c.what;
    if (matching.line) {
      EXPECT_EQ(*matching.line, (LineMatch{c.index, roundedTwips(guides.position(c.index))}))
          << c.what;
    }
    EXPECT_EQ(matching.drawWidth, c.widthAfter) << c.what;
  }
}

constexpr TwipsSize hundred{10000, 5000};  // a percent is 100 twips

TEST(StrokeMeasurement, ListsAVerticalStroke) {
  const TwipsPoint samples[] = {{1040, 10}, {870, 20}, {1100, 30}, {1100.0625F, 40}, {996, 50}};
  EXPECT_EQ(
      resultLines(samples, {0, 1000}, hundred, 1),
      (Lines{"", "  Vertical #1", "  AVG :  0.21", "  Max :  1.00", "  Min :  -1.30", "  Qty :  5",
             "", "001  0.4 %", "002 -1.3 %  **", "003  1.0 %", "004  1.0 %  **", "005 -0.0 %"}));
}

TEST(StrokeMeasurement, TakesTheSamplesOfAHorizontalStrokeFromX) {
  const TwipsPoint samples[] = {{2100, 2050}, {1900, 1970}};
  EXPECT_EQ(resultLines(samples, {8, 2000}, hundred, 0.5F),
            (Lines{"", "  Horizontal #4", "  AVG :  0.10", "  Max :  0.50", "  Min :  -0.30",
                   "  Qty :  2", "", "001  1.0 %  **", "002 -1.0 %  **"}));
}

TEST(ResultsTable, ShowsAndColoursTheMeasuredLines) {
  ResultsTable table;
  const TwipsPoint vertical[] = {{1100.4F, 12.5F}, {1099.6F, 20}, {850, 30}};
  const TwipsPoint horizontal[] = {{0, 2000}, {10, 2110}};
  table.store(vertical, {1, 1000}, hundred);
  table.store(horizontal, {9, 2000}, hundred);
  table.store(horizontal, {19, 2000}, hundred);  // no such row
  const ResultsSheet sheet = table.sheet(1);

  const auto row = [&sheet](std::size_t index) {
    std::string text;
    for (const auto& [shown, colour] : sheet.cells[index]) {
      if (colour == Colour{255, 0, 0}) text += "red ";
      if (colour == Colour{0, 0, 255}) text += "blue ";
      text += shown + ',';
    }
    return text;
  };
  EXPECT_EQ(row(0), "Line #,AVG,MAX,MIN,Qty,Start,END,");
  // 1.004 shows as 1.00, which is within 1.
  EXPECT_EQ(row(2), "V-2,blue 0.17,blue 1.00,red -1.50,3,12.5,30,");
  EXPECT_EQ(row(10), "H-5,blue 0.55,red 1.10,blue 0.00,2,2000,2110,");
  EXPECT_EQ(sheet.cells[6][0].text, "H-1");
  EXPECT_EQ(sheet.cells[1][1].text, "") << "not measured";
}

}  // namespace
}  // namespace touch
