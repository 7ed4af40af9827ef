#include "serial/report_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using Encoding = CoordinateEncoding;
using test::TemporaryFolder;

TEST(ReportFormatFile, AddsTheFormatsThatItDescribes) {
  TemporaryFolder folder;
  folder.write("zevrik.fmt",
               "\xEF\xBB\xBF# name length touching released layout\r\n"
               "\r\n"
               "  tablet-2\t5  E8,e9 A8 low7@1,3   # our own\r\n"
               "swapped 64 C0 - high7@62,60\n"
               "wide 8 5A 5B le16@2,4");
  const auto [formats, problems] = rdformad(folder.path());
  EXPECT_TRUE(problems.empty()) << problems.front().describe();
  EXPECT_EQ(formats, (std::vector<ReportFormat>{
                         {"tablet-2", 5, {0xE8, 0xE9}, {0xA8}, {Encoding::sevenBitLowFirst, 1, 3}},
                         {"swapped", 64, {0xC0}, {}, {Encoding::sevenBitHighFirst, 62, 60}},
                         {"wide", 8, {0x5A}, {0x5B}, {Encoding::sixteenBitLittleEndian, 2, 4}},
                     }));
}

TEST(ReportFormatFile, NeedsNotBeThere) {
  TemporaryFolder folder;
  const auto [formats, problems] = rdformad(folder.path());
  EXPECT_TRUE(formats.empty());
  EXPECT_TRUE(problems.empty());
}

TEST(ReportFormatFile, SaysWhatIsWrongInWhichLineAndKeepsTheOthers) {
  const struct {
    const char* line;
    const char* problem;
  } cases[] = {
      {"x 5 E0 A0", "five fields: name, length, touching, released, layout, found 4"},
      {"x 5 E0 A0 low7@1,3 more", "five fields: name, length, touching, released, layout, found 6"},
      {"first 5 E0 A0 low7@1,3", "a name of its own, found another \"first\""},
      {"x 4 E0 A0 low7@1,3", "a packet length from 5 to 64, found \"4\""},
      {"x 65 E0 A0 low7@1,3", "a packet length from 5 to 64, found \"65\""},
      {"x 5b E0 A0 low7@1,3", "a packet length from 5 to 64, found \"5b\""},
      {"x -5 E0 A0 low7@1,3", "a packet length from 5 to 64, found \"-5\""},
      {"x 5 - A0 low7@1,3", "status bytes of two hexadecimal digits, such as D8,D9, found \"-\""},
      {"x 5 E0, A0 low7@1,3",
       "status bytes of two hexadecimal digits, such as D8,D9, found \"E0,\""},
      {"x 5 E0 A low7@1,3", "status bytes of two hexadecimal digits, such as D8,D9, found \"A\""},
      {"x 5 G0 A0 low7@1,3", "status bytes of two hexadecimal digits, such as D8,D9, found \"G0\""},
      {"x 5 E0 7F low7@1,3", "status bytes from 80 to FF with coordinates of 7 bits, found 7F"},
      {"x 5 E0,E1 E1 low7@1,3",
       "status bytes that are either touching or released, found E1 in both"},
      {"x 5 D1 E1 low7@1,3", "status bytes that no other format has, found D1 of \"first\""},
      {"x 5 E0 A0 low8@1,3",
       "a layout such as low7@1,3 with low7, high7 or le16, found \"low8@1,3\""},
      {"x 5 E0 A0 low7@1", "a layout such as low7@1,3 with low7, high7 or le16, found \"low7@1\""},
      {"x 5 E0 A0 low7@a,3",
       "a layout such as low7@1,3 with low7, high7 or le16, found \"low7@a,3\""},
      {"x 5 E0 A0 low7@0,3",
       "two different places from 1 to 3 for coordinates of two bytes, found \"low7@0,3\""},
      {"x 5 E0 A0 low7@1,4",
       "two different places from 1 to 3 for coordinates of two bytes, found \"low7@1,4\""},
      {"x 5 E0 A0 low7@2,3",
       "two different places from 1 to 3 for coordinates of two bytes, found \"low7@2,3\""},
  };
  TemporaryFolder folder;
  const std::string file = (folder.path() / "zevrik.fmt").string();
  for (const auto& c : cases) {
    folder.write("zevrik.fmt",
                 std::string("first 5 D0 D1 low7@1,3\n\n") + c.line + "\nlast 9 A5 A6 le16@5,7\n");
    const auto [formats, problems] = rdformad(folder.path());
    ASSERT_EQ(problems.size(), 1u) << c.line;
    EXPECT_EQ(problems[0].describe(), file + ", line 3: expected " + c.problem);
    ASSERT_EQ(formats.size(), 2u) << c.line;
    EXPECT_EQ(formats[1].name, "last") << c.line;
  }
}

TEST(ReportFormatFile, IsRefusedAsAWholeWhenItIsNoTextFileOfItsKind) {
  TemporaryFolder folder;
  folder.write("zevrik.fmt", std::string(70000, '#'));
  EXPECT_EQ(rdformad(folder.path()).problems.at(0).expected, "at most 65536 bytes");
  folder.write("zevrik.fmt", std::string("\0\x01\x02 5\n", 6));
  const auto problems = rdformad(folder.path()).problems;
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_EQ(problems[0].line, 1);
}

TEST(ReportCoordinates, AreReadAsTheLayoutSays) {
  const std::vector<std::uint8_t> packet = {0xD8, 0x10, 0x20, 0x30, 0x01, 0xFF, 0xFF};
  const struct {
    CoordinateLayout layout;
    ReportCoordinates expected;
  } cases[] = {{{Encoding::sevenBitLowFirst, 1, 3}, {4112, 176}},
               {{Encoding::sevenBitHighFirst, 1, 3}, {2080, 6145}},
               {{Encoding::sixteenBitLittleEndian, 1, 3}, {0x2010, 0x0130}},
               {{Encoding::sixteenBitLittleEndian, 5, 1}, {65535, 0x2010}},
               {{Encoding::sevenBitLowFirst, 5, 1}, {16383, 4112}}};
  for (const auto& [layout, expected] : cases) {
    const auto found = coordinatesIn(layout, packet);
    EXPECT_EQ(found.x, expected.x);
    EXPECT_EQ(found.y, expected.y);
    EXPECT_LE(found.x, greatestCoordinate(layout.encoding));
  }
}

}  // namespace
}  // namespace touch
