#include "core/closing_step.h"

#include "tests/support/desk.h"

namespace touch {
namespace {

using test::Lines;

class ClosingStep : public test::Desk {};

/// What stands in the journal of a command that is asked once.
Lines exchange(const std::string& command, int wait) {
  return {"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer " + command,
          "delay " + std::to_string(wait), "ReadBuffer 10",   "CloseController"};
}
const Lines probe = exchange("Uu", 100);
const Lines parameter = exchange("SP010AFF", 200);
const Lines lock = {"OpenController USB DEVICE 2",
                    "WriteBuffer PL",
                    "delay 30",
                    "WriteBuffer PL",
                    "delay 100",
                    "ReadBuffer 10",
                    "CloseController"};

Lines operator+(Lines left, const Lines& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

TEST_F(ClosingStep, WritesTheParameterOnlyWhereItIsWantedAndLocksAlways) {
  const ParameterWord word{0x0A, 0xFF};
  const struct {
    const char* what;
    const char* modelReply;
    const char* firmware;
    std::optional<ParameterWord> shown;
    bool written;
  } cases[] = {
      {"newer model", "1234567892", "M0130100", word, true},
      {"other model", "1234567891", "M0130100", word, false},
      {"other firmware", "1234567892", "M0130101", word, false},
      {"short firmware", "1234567892", "3010", word, false},
      {"model cut short", "123456782", "M0130100", word, false},
      {"model unknown", "", "M0130100", word, false},
      {"word never read", "1234567892", "M0130100", std::nullopt, false},
  };
  script.replies["SP010AFF"] = {test::acknowledgement};
  for (const auto& c : cases) {
    journal.clear();
    session.controllerName = "RS232 DEVICE 1";
    script.replies["Uu"] = {test::bytesOf(c.modelReply)};
    plcmd(access(), {"USB DEVICE 2", c.firmware, c.shown});
    EXPECT_EQ(journal, c.written ? probe + parameter + lock : probe + lock) << c.what;
  }
  journal.clear();
  plcmd(access(), {});
  EXPECT_EQ(journal, Lines{}) << "without a controller";
}

}  // namespace
}  // namespace touch
