#include "serial/commands/typed_line.h"

#include "serial/commands/command_sets.h"
#include "serial/debugger/console_log.h"
#include "tests/doubles/test.h"

namespace touch::test {
namespace {

TEST(TypedLines, AreReadAsTextOrInHexadecimal) {
  const std::tuple<TypedAs, std::string, std::string> cases[] = {
      {TypedAs::text, R"(\x01OI\r)", "01 4F 49 0D"},
      {TypedAs::text, R"(say "A\\B")", "73 61 79 20 22 41 5C 42 22"},
      {TypedAs::text, R"(A\x0)", R"(: expected text with \r, \n, \t, \\, \" or \xNN, found \x0)"},
      {TypedAs::text, "", ": expected at least one byte"},
      {TypedAs::text, std::string(4097, 'A'), ": expected at most 4096 bytes, found A"},
      {TypedAs::hex, "01 4f49 \"\\r\"", "01 4F 49 0D"},
      {TypedAs::hex, "OI", ": expected two hexadecimal digits or text in quotes, found OI"},
  };
  for (const auto& [as, text, expected] : cases) {
    const auto bytes = touch::bytesOf({as, text});
    EXPECT_EQ(bytes ? hexText(*bytes) : bytes.error().describe(), expected) << text;
  }
}

TEST(TypedLines, BeginWithTheListsCommandsAndAskForTheirDigit) {
  const std::tuple<CommandSet, std::size_t, std::optional<int>, std::string> cases[] = {
      {CommandSet::m01, 12, {}, R"(\x01OI\r)"},
      {CommandSet::m01, 20, {}, ""},
      {CommandSet::m01, 20, 3, R"(\x01SE3\r)"},
      {CommandSet::quorvane, 11, 0, R"(\x01iE0\r)"},
      {CommandSet::m01, 7, 1, ""},
      {CommandSet::m01, 26, 1, ""},
      {CommandSet::m01, 24, 1, R"(\x01Uu23456\rS)"},
      {CommandSet::e02, 3, 1, "Ui2345678S"},
      {CommandSet::e02, 7, 1, ""},
      {CommandSet::e02, 8, 1, ""},
  };
  for (const auto& [set, position, digit, expected] : cases) {
    const auto line = listedLine(set, position, digit);
    EXPECT_EQ(line.value_or(TypedLine{}).text, expected) << position;
    EXPECT_TRUE(!line || touch::bytesOf(*line)) << position;
  }
}

TEST(TypedLines, ComeBackFromTheHistory) {
  SendHistory history;
  const TypedLine typed{TypedAs::hex, "01"};
  EXPECT_EQ(history.older(typed), std::nullopt);
  for (const char* const text : {"A", "B", "B"})
    history.add({TypedAs::text, text});
  EXPECT_EQ(history.newer(), std::nullopt);
  EXPECT_EQ(history.older(typed)->text, "B");
  EXPECT_EQ(history.older({})->text, "A");
  EXPECT_EQ(history.older({}), std::nullopt);
  EXPECT_EQ(history.newer()->text, "B");
  EXPECT_EQ(history.newer(), typed) << "what stood there before";
  history.add({TypedAs::hex, "01 \"#\""});
  history.add({TypedAs::text, R"(\x01"\\\xFF)"});
  const std::string script = scriptOf(history.lines());
  EXPECT_EQ(script,
            "touch script 1\nsend \"A\"\nsend \"B\"\nsend 01 \"#\"\n"
            "send \"\\x01\\\"\\x5C\\xFF\"\n");
  const auto sent = linesSentBy(*parseScript(script, "sent.tus"));
  ASSERT_EQ(sent.size(), 4u);
  EXPECT_EQ(sent[2], history.lines()[2]);
  EXPECT_EQ(*touch::bytesOf(sent[3]), *touch::bytesOf(history.lines()[3]));
  const auto looped =
      linesSentBy(*parseScript("touch script 1\nrepeat AA 00 to 09\nend\n"
                               "repeat AA 0A to 3F\ncommand GP{AA}\nend",
                               "s"));
  ASSERT_EQ(looped.size(), 1u);
  EXPECT_EQ(*touch::bytesOf(looped[0]), (std::vector<std::uint8_t>{1, 'G', 'P', '0', 'A', 13}));
  for (std::size_t i = 0; i < SendHistory::mostKept; ++i)
    history.add({TypedAs::text, std::to_string(i)});
  std::size_t kept = 0;
  while (history.older(typed))
    ++kept;
  EXPECT_EQ(kept, SendHistory::mostKept);
}

}  // namespace
}  // namespace touch::test
