#include "core/exchange/closing_step.h"

#include "tests/doubles/desk.h"
#include "tests/doubles/drivers.h"

namespace touch::test {
namespace {

class ClosingStep : public Desk {};

TEST_F(ClosingStep, WritesTheParameterOnlyWhereItIsWantedAndLocksAlways) {
  const ParameterWord word{0x0A, 0xFF};
  const auto word01 = replyOf("00AFF");
  const std::tuple<const char*, const char*, const char*, std::optional<ParameterWord>,
                   std::deque<Bytes>, bool>
      cases[] = {
          {"newer model", "1234567892", "M0130100", word, {}, true},
          {"other model", "1234567891", "M0130100", word, {}, false},
          {"model cut short", "123456782", "M0130100", word, {}, false},
          {"model unknown", "", "M0130100", word, {}, false},
          {"other firmware", "1234567892", "M0130101", word, {}, false},
          {"word read first", "1234567892", "M0130100", {}, {word01}, true},
          {"word read at the second try", "1234567892", "M0130100", {}, {refusal, word01}, true},
          {"no word to be had", "1234567892", "M0130100", {}, {{}, refusal}, false},
          {"an answer without a word", "1234567892", "M0130100", {}, {acknowledgement}, false},
      };
  const Lines open = {"OpenController RS232 DEVICE 1", "FlushReadBuffer"};
  const Lines close = {"CloseController"};
  const Lines probe = {"WriteBuffer Uu", "delay 100", "ReadBuffer 10"};
  const Lines ask = {"WriteBuffer GP01", "delay 200", "ReadBuffer 10"};
  // What is not acknowledged is asked once more, without a flush.
  const Lines write = times(2, Lines{"WriteBuffer SP010AFF", "delay 200", "ReadBuffer 10"});
  const Lines lock = {"OpenController USB DEVICE 2",
                      "WriteBuffer PL",
                      "delay 30",
                      "WriteBuffer PL",
                      "delay 100",
                      "ReadBuffer 10"};
  for (const auto& [what, modelReply, firmware, known, answers, written] : cases) {
    journal.clear();
    session.controllerName = "RS232 DEVICE 1";
    script.replies["Uu"] = {bytesOf(modelReply)};
    script.replies["GP01"] = answers;
    script.replies["SP010AFF"] = {refusal, acknowledgement};
    const auto shown = plcmd(access(), {"USB DEVICE 2", firmware, known});
    EXPECT_EQ(shown, written || known ? std::optional(word) : std::nullopt) << what;
    Lines expected = open + probe + close;
    if (!answers.empty()) expected = expected + open + times(answers.size(), ask) + close;
    if (written) expected = expected + open + write + close;
    EXPECT_EQ(journal, expected + lock + close) << what;
  }
  journal.clear();
  plcmd(access(), {});
  EXPECT_EQ(journal, Lines{}) << "without a controller";
  LackingDriver part(driver(), {"FlushReadBuffer"});
  plcmd({session, part, clock}, {"USB DEVICE 2", "M0130100", word});
  EXPECT_EQ(std::ranges::count(journal, "WriteBuffer PL"), 2) << "without a flush";
}

}  // namespace
}  // namespace touch::test
