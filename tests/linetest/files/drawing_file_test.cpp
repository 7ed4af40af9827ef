#include "linetest/files/drawing_file.h"

#include "tests/doubles/comma_locale.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

TEST(DrawingFile, HasItsRecordsInOrderWhateverTheLanguage) {
  const CommaLocale locale;
  const Stroke strokes[] = {{12, 2, {{480, 15}, {481.5F, -0.5F}}}, {0, 1, {{14880, 11160}}}};
  EXPECT_EQ(drawingText(strokes),
            "Line #000\r\n 12 \r\n 2 \r\n 2 \r\n"
            " 480           15 \r\n 481.5        -0.5 \r\n"
            "Line #001\r\n 0 \r\n 1 \r\n 1 \r\n 14880         11160 \r\n");
}

TEST(DrawingFile, KeepsEveryByteWhenReadAndWrittenAgain) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "many.fdw";
  Drawing drawing(1000, Stroke{9, 2, {{480, -1e-7F}}});
  drawing.push_back({15, 1, {}});
  for (float i = 0; i < 3001; ++i)
    drawing.back().samples.push_back({i * 15.25F, 480 - i / 7});
  ASSERT_EQ(whyNot(writeDrawing(path, drawing)), "");
  const std::string text = folder.read("many.fdw");
  EXPECT_NE(text.find("Line #1000\r\n"), text.npos);
  const auto read = readDrawing(path);
  ASSERT_EQ(whyNot(read), "");
  EXPECT_EQ(*read, drawing);
  EXPECT_EQ(drawingText(*read), text);
}

TEST(DrawingFile, IsReadInOtherLayoutsWhateverTheLanguage) {
  const CommaLocale locale;
  const Drawing expected = {{12, 2, {{480, 0.015F}, {481.5F, -2}}}};
  for (const char* text :
       {"Line #7\n12,2,2\n480,\t.015,481.5,-2", "Line #1\r12 , 2\r2 +480 , 15E-03\r481.5e+00,-2.0",
        "\r\nLine #000  \r\n 12 2 2 4.8E+2\t1.5e-2\r\n\r\n 481.5\t-2 \r\n"}) {
    const auto read = parseDrawing(text, "f");
    ASSERT_EQ(whyNot(read), "") << text;
    EXPECT_EQ(*read, expected) << text;
  }
  EXPECT_EQ(*parseDrawing("", "f"), Drawing{});
}

TEST(DrawingFile, IsNeitherReadNorWrittenWhenItHoldsTooMuch) {
  const TemporaryFolder folder;
  const auto path = folder.path() / "much.fdw";
  const Drawing drawing(3, Stroke{1, 1, {{}, {}}});
  const std::pair<DrawingLimits, std::string> cases[] = {
      {{2, 6}, ": expected at most 2 strokes in a drawing, found more"},
      {{3, 5}, ": expected at most 5 samples in a drawing, found more"}};
  for (const auto& [limits, problem] : cases) {
    EXPECT_EQ(whyNot(writeDrawing(path, drawing, limits)), path.string() + problem);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(whyNot(parseDrawing(drawingText(drawing), "f", limits)), "f" + problem);
  }
  EXPECT_TRUE(parseDrawing(drawingText(drawing), "f", {3, 6}));
}

TEST(DrawingFile, SaysWhereItIsDamaged) {
  const std::string start = "Line #000\r\n 12 \r\n 1 \r\n";
  const std::pair<std::string, const char*> cases[] = {
      {"GIF89a", "1: expected \"Line #\" and a stroke's number, found \"GIF89a\""},
      {"Line #000\r\n 16 \r\n", "2: expected a palette index from 0 to 15, found \"16\""},
      {"Line #000\r\n 1 \r\n 3", "3: expected a draw width of 1 or 2, found \"3\""},
      {start + " 0 ", "4: expected a count of samples from 1 to 3001, found \"0\""},
      {start + " 3002 ", "4: expected a count of samples from 1 to 3001, found \"3002\""},
      {start + " 2 \r\n 1 2\r\n 3 ", "6: expected the y of a sample, found the end of the file"},
      {start + " 2 \r\n 1 2\r\nLine #001", "6: expected the x of a sample, found \"Line\""},
      {start + " 1 \r\n 1 2 3\r\n", "5: expected \"Line #\" and a stroke's number, found \"3\""},
      {start + " 1 \r\n nan 2\r\n", "5: expected the x of a sample, found \"nan\""},
      {start + " 1 \r\n 1e99 2\r\n", "5: expected the x of a sample, found \"1e99\""},
      {start + " 1 \r\n 1.5.2 2\r\n", "5: expected the x of a sample, found \"1.5.2\""},
      {start + " 1 \r\n 1 2\x01\r\n", "5: expected the y of a sample, found \"2\\x01\""},
  };
  for (const auto& [text, error] : cases) {
    EXPECT_EQ(whyNot(parseDrawing(text, "f")), std::string("f, line ") + error);
  }
}

}  // namespace
}  // namespace touch::test
