#include "core/discovery.h"

#include "core/driver_settings.h"
#include "core/exchange.h"
#include "tests/support/desk.h"

namespace touch {
namespace {

using test::acknowledgement;
using test::Lines;
using test::refusal;
using test::replyOf;
using testing::Contains;
using testing::Not;
using testing::StartsWith;

class Discovery : public test::Desk {};

TEST(ServedNames, HaveALineAndADevice) {
  for (const char* name : {"RS232 DEVICE 1", "USB DEVICE 2", "USBDEVICE", "XXXDEVICE USB"})
    EXPECT_TRUE(isServedName(name)) << name;
  for (const char* name : {"DEVICE USB", "XXDEVICE USB", "PS2 DEVICE 1", "USB PANEL 1",
                           "usb device 1", "", "DEVICE USB DEVICE"})
    EXPECT_FALSE(isServedName(name)) << name;
}

TEST_F(Discovery, ChoosesTheFirstControllerThatAnswers) {
  script.names = {"RS232 DEVICE 1", "PS2 DEVICE", "USB DEVICE 2", "USB DEVICE 3"};
  // Five bytes are no answer, six are one; the answer of the second controller comes at its second try.
  script.replies["UT"] = {replyOf("ABC"), {}, replyOf("ABC"), replyOf("ABCD")};
  std::vector<std::string> probed;

  const ControllerList list =
      getctrname(access(), prompt, [&probed](const std::string& name) { probed.push_back(name); });

  EXPECT_EQ(list.names, (Lines{"RS232 DEVICE 1", "USB DEVICE 2", "USB DEVICE 3"}));
  EXPECT_EQ(list.answered, 1u);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  EXPECT_EQ(probed, (Lines{"RS232 DEVICE 1", "USB DEVICE 2"}));
  Lines expected = {"GetExistControllers", "GetControllerName 1 20", "GetControllerName 2 20",
                    "GetControllerName 3 20", "GetControllerName 4 20"};
  for (const std::string& name : probed) {
    expected.insert(expected.end(), {"OpenController " + name, "WriteBuffer UT", "delay 100",
                                     "ReadBuffer 10", "WriteBuffer UT", "delay 100",
                                     "ReadBuffer 10", "CloseController", "delay 100"});
  }
  expected.pop_back();
  EXPECT_EQ(journal, expected) << "the pause is after silence only";
}

TEST_F(Discovery, TakesOnlyTheLowByteOfTheCountAndAtMost21Names) {
  script.names.clear();
  for (int i = 1; i <= 300; ++i)
    script.names.push_back("USB DEVICE " + std::to_string(i));
  const struct {
    std::int32_t count;
    std::size_t listed;
    bool says;
  } cases[] = {{0, 0, true},    {-1, 0, true},    {256, 0, true},        {3, 3, false},
               {21, 21, false}, {255, 21, false}, {0x7FFFFF02, 2, false}};
  for (const auto& [count, listed, says] : cases) {
    journal.clear();
    script.results["GetExistControllers"] = count;
    EXPECT_EQ(getctrnameo(access(), prompt).names.size(), listed) << count;
    EXPECT_EQ(journal.back() == "message No device was found", says) << count;
  }
}

TEST_F(Discovery, SurvivesADriverThatLies) {
  script.lies = true;
  script.names = {"USB DEVICE with a name that is too long"};
  script.replies["UT"] = {test::Bytes(15, 'x')};
  const ControllerList list = getctrname(access(), prompt);
  EXPECT_EQ(list.names, (Lines{"USB DEVICE with a na"}));

  Connection connection(access());
  connection.write(commandFrame("UT"));
  EXPECT_EQ(connection.read().size(), Connection::replyLimit);
  EXPECT_EQ(connection.read(3).size(), 3u);
}

TEST_F(Discovery, AsksOnceMoreWithoutAFlushWhenACommandIsNotAcknowledged) {
  script.replies["SP011AFF"] = {refusal, acknowledgement};
  EXPECT_TRUE(exchangeAcknowledged(access(), parameterWriteFrame("01", "1A", "FF")));
  EXPECT_EQ(journal,
            (Lines{"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer SP011AFF",
                   "delay 200", "ReadBuffer 10", "WriteBuffer SP011AFF", "delay 200",
                   "ReadBuffer 10", "CloseController"}));
  journal.clear();
  EXPECT_FALSE(exchangeAcknowledged(access(), parameterReadFrame("1")));
  EXPECT_THAT(journal, Not(Contains(StartsWith("Write")))) << "a refused frame";
}

TEST_F(Discovery, PutsSettingsThatAreOutOfRangeRight) {
  const struct {
    std::int32_t mode;
    std::int32_t time;
    int shownMode;
    int shownTime;
    Lines written;
  } cases[] = {
      {1, 300, 1, 300, {}},
      {3, 1200, 3, 1200, {}},
      {0x102, 700, 2, 700, {}},
      {0, 299, 2, 1000, {"SetReportMode 1", "SetRightClickTime 1000"}},
      {4, 1201, 2, 1000, {"SetReportMode 1", "SetRightClickTime 1000"}},
      {255, -5, 2, 1000, {"SetReportMode 1", "SetRightClickTime 1000"}},
  };
  for (const auto& c : cases) {
    journal.clear();
    script.results["GetReportMode"] = c.mode;
    script.results["GetRightClickTime"] = c.time;
    const DriverSettings settings = readset(access());
    EXPECT_EQ(settings.touchMode, c.shownMode) << c.mode;
    EXPECT_EQ(settings.rightClickTime, c.shownTime) << c.time;
    Lines written;
    std::copy_if(journal.begin(), journal.end(), std::back_inserter(written),
                 [](const auto& line) { return line.starts_with("Set"); });
    EXPECT_EQ(written, c.written);
  }
}

}  // namespace
}  // namespace touch
