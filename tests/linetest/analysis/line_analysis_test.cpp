#include "linetest/analysis/line_analysis.h"

#include "linetest/analysis/results_table.h"
#include "tests/doubles/test.h"

namespace touch::test {
namespace {

constexpr int none = -1;

TEST(LineMatcher, MatchesAStartToItsLine) {
  // Round numbers: bands of 100 and 50 twips.
  const GuideLines guides({10240, 5120});
  const LineMatcher matcher(guides, {100, 50});
  const std::tuple<const char*, int, int, int, int> cases[] = {
      {"first vertical line, at the top edge, just within its band", 419, 20, 0, 2},
      {"its band's right edge is outside", 420, 20, none, 1},
      {"its band's left edge is outside", 220, 20, none, 1},
      {"exactly one band from the top counts as the edge", 5120, 50, 2, 2},
      {"past it: the horizontal ones are tried, in vain", 5120, 51, 2, 1},
      {"exactly one band from the bottom counts as the edge", 5120, 5070, 2, 2},
      {"first horizontal line, from the left, just within its band", 20, 209, 5, 1},
      {"its band's edge is outside", 20, 210, none, 1},
      {"both match: the horizontal line wins", 320, 160, 5, 2},
  };
  for (const auto& [what, x, y, index, widthAfter] : cases) {
    const Matching matching = matcher.postest(x, y, 2);
    EXPECT_EQ(matching.line ? matching.line->index : none, index) << what;
    EXPECT_EQ(matching.drawWidth, widthAfter) << what;
  }
}

constexpr TwipsSize hundred{10000, 5000};  // a percent is 100 twips

TEST(StrokeMeasurement, ListsTheSamplesOfEitherStrokeFromX) {
  const TwipsPoint down[] = {{1025, 10}, {870, 20}, {1100, 30}, {1100.0625F, 40}, {996, 50}};
  // A half is rounded away from zero.
  EXPECT_EQ(
      resultLines(down, {0, 1000}, hundred, Percent{1}),
      (Lines{"", "  Vertical #1", "  AVG :  0.18", "  Max :  1.00", "  Min :  -1.30", "  Qty :  5",
             "", "001  0.3 %", "002 -1.3 %  **", "003  1.0 %", "004  1.0 %  **", "005 -0.0 %"}));
  const TwipsPoint rightwards[] = {{2100, 2050}, {1900, 1970}};
  EXPECT_EQ(resultLines(rightwards, {8, 2000}, hundred, Percent{0.5F}),
            (Lines{"", "  Horizontal #4", "  AVG :  0.10", "  Max :  0.50", "  Min :  -0.30",
                   "  Qty :  2", "", "001  1.0 %  **", "002 -1.0 %  **"}));
}

TEST(ResultsTable, ShowsAndColoursTheMeasuredLines) {
  ResultsTable table;
  const TwipsPoint down[] = {{1100.4F, 12.5F}, {1099.6F, 20}, {850, 30}};
  const TwipsPoint rightwards[] = {{0, 2000}, {10, 2110}};
  table.store(down, {1, 1000}, hundred);
  table.store(rightwards, {9, 2000}, hundred);
  table.store(rightwards, {19, 2000}, hundred);  // no such row
  const ResultsSheet sheet = table.sheet(Percent{1});

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
  EXPECT_EQ(row(1), "V-1,blue ,blue ,blue ,,,,") << "not measured";
  // 1.004 shows as 1.00, which is within 1.
  EXPECT_EQ(row(2), "V-2,blue 0.17,blue 1.00,red -1.50,3,12.5,30,");
  EXPECT_EQ(row(10), "H-5,blue 0.55,red 1.10,blue 0.00,2,2000,2110,");
}

}  // namespace
}  // namespace touch::test
