#include "reports/report_format.h"

#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

using Encoding = CoordinateEncoding;

TEST(ReportFormatFile, AddsTheFormatsThatItDescribesAndNeedsNotBeThere) {
  TemporaryFolder folder;
  EXPECT_TRUE(rdformad(folder.path()).problems.empty());
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

TEST(ReportFormatFile, SaysWhatIsWrongInWhichLineAndKeepsTheOthers) {
  const std::string length = "a packet length from 5 to 64, found ";
  const std::string status = "status bytes of two hexadecimal digits, such as D8,D9, found ";
  const std::string layout = "a layout such as low7@1,3 with low7, high7 or le16, found ";
  const std::string places =
      "two different places from 1 to 3 for coordinates of two bytes, found ";
  const std::pair<std::string, std::string> cases[] = {
      {"x 5 E0 A0", "five fields: name, length, touching, released, layout, found 4"},
      {"first 5 E0 A0 low7@1,3", "a name of its own, found another \"first\""},
      {"x 4 E0 A0 low7@1,3", length + "\"4\""},
      {"x 5b E0 A0 low7@1,3", length + "\"5b\""},
      {"x 5 E0, A0 low7@1,3", status + "\"E0,\""},
      {"x 5 G0 A0 low7@1,3", status + "\"G0\""},
      {"x 5 E0 A low7@1,3", status + "\"A\""},
      {"x 5 E0 7F low7@1,3", "status bytes from 80 to FF with coordinates of 7 bits, found 7F"},
      {"x 5 E0,E1 E1 low7@1,3",
       "status bytes that are either touching or released, found E1 in both"},
      {"x 5 D1 E1 low7@1,3", "status bytes that no other format has, found D1 of \"first\""},
      {"x 5 E0,D8 A0 low7@1,3", "status bytes that no other format has, found D8 of \"tablet\""},
      {"x 5 E0 55 le16@1,3", "status bytes that no other format has, found 55 of \"E02\""},
      {"x 5 E0 A0 low8@1,3", layout + "\"low8@1,3\""},
      {"x 5 E0 A0 low7@1", layout + "\"low7@1\""},
      {"x 5 E0 A0 low7@0,3", places + "\"low7@0,3\""},
      {"x 5 E0 A0 low7@1,4", places + "\"low7@1,4\""},
      {"x 5 E0 A0 low7@2,3", places + "\"low7@2,3\""},
  };
  for (const auto& [line, problem] : cases) {
    const auto [formats, problems] = parseFormats(
        "first 5 D0 D1 low7@1,3\n\n" + line + "\nlast 9 A5 A6 le16@5,7\n", "zevrik.fmt");
    EXPECT_EQ(problems.at(0).describe(), "zevrik.fmt, line 3: expected " + problem);
    EXPECT_EQ(problems.size(), 1u) << line;
    EXPECT_EQ(formats.at(1).name, "last") << line;
  }
}

TEST(ReportFormatFile, TellsTheFirstTenProblemsAndHowManyThereAre) {
  const auto told = [](std::size_t problems) {
    std::string lines;
    for (std::size_t i = 0; i < problems; ++i)
      lines += "x\n";
    const std::string text = describeProblems(parseFormats(lines, "f"));
    return std::pair(std::ranges::count(text, '\n'), text.substr(text.rfind('\n') + 1));
  };
  EXPECT_EQ(describeProblems({}), "");
  EXPECT_EQ(told(10).first, 9);
  EXPECT_EQ(told(10).second.substr(0, 10), "f, line 10");
  EXPECT_EQ(told(200),
            (std::pair(10L, std::string("200 problems in all; these are the first 10."))));
}

TEST(ReportFormatFile, IsRefusedAsAWholeWhenItIsNoTextFileOfItsKind) {
  TemporaryFolder folder;
  folder.write("zevrik.fmt", std::string(70000, '#'));
  EXPECT_EQ(rdformad(folder.path()).problems.at(0).expected, "at most 65536 bytes");
  folder.write("zevrik.fmt", std::string("\0\x01\x02 5\n", 6));
  EXPECT_EQ(rdformad(folder.path()).problems.at(0).line, 1);
}

}  // namespace
}  // namespace touch::test
