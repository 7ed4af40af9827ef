#include "core/driver/trace.h"

#include <nlohmann/json.hpp>

#include "core/driver/connection.h"
#include "support/text/text_encoding.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/small_disk.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

class Tracing : public Desk {
 protected:
  TemporaryFolder folder;
  const fs::path file = folder.path() / "trace.jsonl";
  Trace trace;
};

TEST_F(Tracing, WritesOneJsonObjectForEachCall) {
  TracingDriver traced(driver(), trace);
  script.names = {"USB \"\xE9\" DEVICE"};
  script.touches = {std::pair{1500, -2}};
  script.replies["UT"] = {replyOf("A")};
  controllerName(traced, 1);
  ASSERT_EQ(whyNot(trace.start(file)), "");
  controllerName(traced, 1);
  {
    Connection connection({session, traced, clock}, "USB DEVICE");
    connection.write(commandFrame("UT"));
    connection.read();
    std::int32_t raw[2] = {};
    traced.CalCurrentPointReady(connection.handle(), raw);
  }
  constexpr std::size_t aLineAndABit = 120;
  EXPECT_THAT(trace.end(aLineAndABit), testing::Optional(MatchesRegex("[{][^\n]+Close[^\n]+\n")));
  trace.stop();
  traced.QueryMultiMonitorSetOK();

  std::istringstream lines(folder.read("trace.jsonl"));
  std::string written;
  for (std::string line; std::getline(lines, line);) {
    const auto object = nlohmann::json::parse(line);
    EXPECT_EQ(object.at("time").get<std::string>().size(), 24u);
    written += object.at("call").get<std::string>() + object.at("arguments").dump() +
               object.at("result").dump() + '\n';
  }
  EXPECT_EQ(written,
            "GetControllerName[1,\"USB \\\"\u00e9\\\" DEVICE\",20]1\n"
            "OpenController[\"USB DEVICE\"]2\n"
            "WriteBuffer[2,\"01 55 54 0D\",4]1\n"
            "ReadBuffer[2,\"01 41 0D\",10]3\n"
            "CalCurrentPointReady[2,[1500,-2]]1\n"
            "CloseController[2]1\n");
}

TEST_F(Tracing, SaysWhyItCannotBeginOrOnceThatItEndsOnAFullDisk) {
  const fs::path missing = folder.path() / "missing" / "trace.jsonl";
  EXPECT_THAT(whyNot(trace.start(missing)), HasSubstr(missing.string() + " cannot be written: "));
  {
    const SmallDisk disk(100);
    ASSERT_EQ(whyNot(trace.start(file)), "");
    trace.write("\"call\":\"A\"");
    EXPECT_EQ(trace.takeBreak(), std::nullopt);
    trace.write("\"call\":\"" + std::string(100, 'B') + '"');
  }
  EXPECT_FALSE(trace.isOn());
  EXPECT_THAT(trace.takeBreak(), testing::Optional(HasSubstr(file.string())));
  EXPECT_EQ(trace.takeBreak(), std::nullopt);
  EXPECT_THAT(folder.read("trace.jsonl"), MatchesRegex("[^\n]+}\n")) << "a whole line";

  Trace limited(50);
  ASSERT_EQ(whyNot(limited.start(file)), "");
  for (int i = 0; i < 3; ++i)
    limited.write("\"call\":\"A\"");
  EXPECT_THAT(limited.takeBreak(), testing::Optional(HasSubstr("limit of 50 bytes")));
  EXPECT_FALSE(limited.isOn());
  EXPECT_THAT(folder.read("trace.jsonl"),
              MatchesRegex("[^\n]+\n[^\n]+\n[^\n]+,\"end\":\"the limit is reached\"}\n"));
}

TEST(Escaping, LeavesNothingInATextThatIsObeyed) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"plain \u00e9\U0001F600", "plain \u00e9\U0001F600", "\"plain \u00e9\U0001F600\""},
      {"\x1B[2J\x7F", "\\x1B[2J\\x7F", "\"\\u001B[2J\\u007F\""},
      {"\u009B\u00A0", "\\x9B\u00A0", "\"\\u009B\u00A0\""},
      {"\x9B", "\\x9B", "\"\\u009B\""},
      {"a\u202Eb\u200F\u061C\u2069", "a\\u202Eb\\u200F\\u061C\\u2069",
       "\"a\\u202Eb\\u200F\\u061C\\u2069\""},
      {"\"\\\n", "\"\\\\x0A", "\"\\\"\\\\\\u000A\""},
  };
  for (const auto& [text, printed, json] : cases) {
    EXPECT_EQ(printable(text), printed);
    EXPECT_EQ(jsonText(text), json);
  }
  EXPECT_EQ(printableLines("a\r\nb\n"), "a\\x0D\nb\n");
}

}  // namespace
}  // namespace touch::test
