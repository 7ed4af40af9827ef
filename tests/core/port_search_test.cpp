#include "core/port_search.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <set>

#include "core/serial_port.h"
#include "tests/support/desk.h"

namespace touch {
namespace {

using test::Bytes;
using test::bytesOf;
using test::Lines;
using test::replyOf;

/// Writes what is done with it to the journal; on each port a controller answers as the replies
/// say.
class FakePorts final : public SerialPort {
 public:
  explicit FakePorts(Lines& journal) : journal_(journal) {}

  std::set<int> present;
  std::map<std::string, Bytes> replies;  ///< by port and command: "5 UT"

  std::optional<std::string> setSettings(std::string_view settings) override {
    journal_.push_back("settings " + std::string(settings));
    return std::nullopt;
  }
  void selectPort(int number) override {
    EXPECT_FALSE(open_) << "chosen while open";
    number_ = number;
  }
  std::optional<std::string> open() override {
    journal_.push_back("open " + std::to_string(number_));
    open_ = present.contains(number_);
    return open_ ? std::nullopt : std::optional<std::string>("absent");
  }
  void close() override {
    if (open_) journal_.push_back("close");
    open_ = false;
  }
  bool isOpen() const override { return open_; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return pending_.size(); }
  void clearInput() override {}
  void clearOutput() override {}
  void write(std::span<const std::uint8_t> bytes) override {
    const std::string frame(bytes.begin(), bytes.end());
    journal_.push_back("write " + frame);
    pending_ = replies[std::to_string(number_) + ' ' + frame.substr(1, frame.size() - 2)];
  }
  Bytes readAll() override { return std::exchange(pending_, {}); }

 private:
  Lines& journal_;
  int number_ = 0;
  bool open_ = false;
  Bytes pending_;
};

class ComPortSearch : public test::Desk {
 protected:
  FakePorts ports{journal};
};

TEST_F(ComPortSearch, AsksEachPortFromTheLastDownAndSetsUpTheOneThatAnswers) {
  ports.present = {16, 14, 13};
  ports.replies = {{"14 UT", replyOf("QMRV")}, {"14 MS", replyOf("0")}, {"13 UT", replyOf("X")}};
  EXPECT_EQ(searchComPorts(access(), ports), (PortSearch{14, true, false}));
  EXPECT_EQ(journal,
            (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort", "CloseController",
                   "settings 9600,n,8,1", "open 16", "write \x01UT\r", "delay 200", "close",
                   "settings 9600,n,8,1", "open 15", "settings 9600,n,8,1", "open 14",
                   "write \x01UT\r", "delay 200", "write \x01MS\r", "delay 100", "close"}));
  EXPECT_EQ(session.outputFrame, commandFrame("MS"));
}

TEST_F(ComPortSearch, JudgesTheAnswerByItsEndsAndTheSetUpByItsSecondByte) {
  const PortSearch nothing;
  const struct {
    const char* what;
    Bytes answer;
    Bytes setUp;
    PortSearch expected;
  } cases[] = {
      {"silent", {}, {}, nothing},
      {"one byte", {0x01}, {}, nothing},
      {"one byte, an end", {0x0D}, {}, nothing},
      {"shortest", {0x01, 0x0D}, {}, {1, false, false}},
      {"bytes before", bytesOf("x\x01:\r"), {}, nothing},
      {"bytes behind", bytesOf("\x01:\r\n"), {}, nothing},
      {"reports within", bytesOf("\x01:\r\xFF\x01\r"), {}, {1, false, false}},
      {"set up", replyOf("A"), replyOf("0"), {1, true, false}},
      {"set up in two bytes", replyOf("A"), bytesOf("x0"), {1, true, false}},
      {"set-up refused", replyOf("A"), replyOf("1"), {1, false, false}},
      {"zero in the first place", replyOf("A"), bytesOf("0\r"), {1, false, false}},
  };
  ports.present = {1};
  for (const auto& c : cases) {
    ports.replies = {{"1 UT", c.answer}, {"1 MS", c.setUp}};
    EXPECT_EQ(searchComPorts(access(), ports), c.expected) << c.what;
    EXPECT_FALSE(ports.isOpen()) << c.what;
  }
}

TEST_F(ComPortSearch, ClosesAPortThatWasOpenAndEndsWhenTheUserWantsIt) {
  const struct {
    int cancelledAt;
    Lines expected;
  } cases[] = {
      {16, {"open 7", "close"}},
      {14, {"open 7", "close", "open 16", "open 15", "write \x01UT\r", "delay 200", "close"}},
  };
  for (const auto& c : cases) {
    ports.present = {7, 15};
    ports.selectPort(7);
    journal.clear();
    ports.open();
    const auto search =
        searchComPorts(access(), ports, [&c](int port) { return port != c.cancelledAt; });
    EXPECT_EQ(search, (PortSearch{std::nullopt, false, true}));
    Lines lines;
    std::copy_if(journal.begin(), journal.end(), std::back_inserter(lines),
                 [](const std::string& line) { return std::islower(line[0]) && line[0] != 's'; });
    EXPECT_EQ(lines, c.expected);
  }
}

TEST(ComPortSearchText, IsWhatTheUserKnows) {
  EXPECT_EQ(describe(PortSearch{12, true, false}), "Setup Ok in Com:12");
  EXPECT_EQ(describe(PortSearch{3, false, false}), "Controller in com:3  But Setup Error");
  EXPECT_EQ(describe(PortSearch{}), "controller not found ??");
  EXPECT_EQ(describe(PortSearch{std::nullopt, false, true}), "");
}

}  // namespace
}  // namespace touch
