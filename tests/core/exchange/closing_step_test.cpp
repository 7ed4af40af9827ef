#include "core/exchange/closing_step.h"

#include "tests/doubles/desk.h"
#include "tests/doubles/lacking_driver.h"

namespace touch {
namespace {

using test::Lines;

class ClosingStep : public test::Desk {};

TEST_F(ClosingStep, WritesTheParameterOnlyWhereItIsWantedAndLocksAlways) {
  const ParameterWord word{0x0A, 0xFF};
  const auto word01 = test::replyOf("00AFF");
  const struct {
    const char* what;
    const char* modelReply;
    const char* firmware;
    std::optional<ParameterWord> shown;
    std::deque<test::Bytes> read;  ///< the answers to "GP", if that is asked
    bool written;
  } cases[] = {
      {"newer model", "1234567892", "M0130100", word, {}, true},
      {"other model", "1234567891", "M0130100", word, {}, false},
      {"model cut short", "123456782", "M0130100", word, {}, false},
      {"model unknown", "", "M0130100", word, {}, false},
      {"other firmware", "1234567892", "M0130101", word, {}, false},
      {"word read first", "1234567892", "M0130100", {}, {word01}, true},
      {"word read at the second try", "1234567892", "M0130100", {}, {test::refusal, word01}, true},
      {"no word to be had", "1234567892", "M0130100", {}, {{}, test::refusal}, false},
      {"an answer without a word", "1234567892", "M0130100", {}, {test::acknowledgement}, false},
  };
  for (const auto& c : cases) {
    journal.clear();
    session.controllerName = "RS232 DEVICE 1";
    script.replies["Uu"] = {test::bytesOf(c.modelReply)};
    script.replies["GP01"] = c.read;
    script.replies["SP010AFF"] = {test::refusal, test::acknowledgement};
    const auto shown = plcmd(access(), {"USB DEVICE 2", c.firmware, c.shown});
    EXPECT_EQ(shown, c.written || c.shown ? std::optional(word) : std::nullopt) << c.what;
    Lines expected;
    const auto add = [&expected](const Lines& lines) {
      expected.insert(expected.end(), lines.begin(), lines.end());
    };
    add({"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer Uu", "delay 100",
         "ReadBuffer 10", "CloseController"});
    if (!c.read.empty()) {
      add({"OpenController RS232 DEVICE 1", "FlushReadBuffer"});
      for (std::size_t i = 0; i < c.read.size(); ++i)
        add({"WriteBuffer GP01", "delay 200", "ReadBuffer 10"});
      add({"CloseController"});
    }
    if (c.written) {
      // What is not acknowledged is asked once more, without a flush.
      add({"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer SP010AFF", "delay 200",
           "ReadBuffer 10", "WriteBuffer SP010AFF", "delay 200", "ReadBuffer 10",
           "CloseController"});
    }
    add({"OpenController USB DEVICE 2", "WriteBuffer PL", "delay 30", "WriteBuffer PL", "delay 100",
         "ReadBuffer 10", "CloseController"});
    EXPECT_EQ(journal, expected) << c.what;
  }
  journal.clear();
  plcmd(access(), {});
  EXPECT_EQ(journal, Lines{}) << "without a controller";
  test::LackingDriver part(driver(), {"FlushReadBuffer"});
  plcmd({session, part, clock}, {"USB DEVICE 2", "M0130100", word});
  EXPECT_EQ(std::ranges::count(journal, "WriteBuffer PL"), 2) << "without a flush";
}

}  // namespace
}  // namespace touch
