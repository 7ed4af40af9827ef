#include "simulator/simulated_controller.h"

#include <string>

#include "simulator/controllers.h"
#include "tests/simulator/driver_bench.h"

namespace touch::simulator {
namespace {

using namespace std::chrono_literals;

class Controllers : public DriverBench {
 protected:
  std::int32_t serial = driver.OpenController(serialName);
  std::int32_t usb = driver.OpenController(usbName);
};

constexpr auto eight = LineFormat::eightN1;
constexpr auto seven = LineFormat::sevenN2;

const std::string acknowledged = framed("0");
const std::string refused = framed("1");

TEST_F(Controllers, answerFramedCommands) {
  const struct {
    const char* commands;
    const char* serialReplies;
    const char* usbReplies;
  } cases[] = {
      {"UT iU OI iO", "QRMV0301 QRMV0301 M0130100 M0130100", "QMRV1000 QMRV1000 M0110100 M0110100"},
      {"MP MT iS MT MI MT", "0 MP 0 MS 0 MI", "0 MP 0 MS 0 MI"},
      {"SE3 PO MP OS", "0 0 0 PPO3", "0 0 0 PPO3"},
      {"GP02 GP3F GP40 GP7F GP81 iGbf GPC0", "04000 0FFFF 1 1 00000 0FFFF 1",
       "04000 0FFFF 1 1 00000 0FFFF 1"},
      {"SP081AFF GP08 iW081234 GP08", "0 01AFF 0 01234", "0 01AFF 0 01234"},
      {"PL SP080000 GP08 R SP080000 GP08", "0 1 01234 0 0 00000", "0 1 01234 0 0 00000"},
      {"SP801234 RD GP08 GP80 RF GP80", "0 0 00064 01234 0 00004", "0 0 00050 01234 0 00005"},
      {"XX Z", "1 0", "1 0"},
  };
  for (const auto& [commands, serialReplies, usbReplies] : cases) {
    for (const auto& [handle, replies] : {std::pair{serial, serialReplies}, {usb, usbReplies}}) {
      std::istringstream asked(commands);
      std::istringstream expected(replies);
      for (std::string command; asked >> command;) {
        std::string reply;
        expected >> reply;
        EXPECT_EQ(ask(handle, framed(command)), framed(reply)) << command << " of " << commands;
      }
    }
  }
}

TEST_F(Controllers, answerInPacketsOfTen) {
  const struct {
    std::string command;
    std::string serialReply;
    std::string usbReply;
  } cases[] = {
      {framed("Uu"), "UIQRMV0302", "UIQMRV1001"}, {"\x01Uu23456\x0DS", "UIQRMV0302", "UIQMRV1001"},
      {"Ua2345678S", "UIa0000000", "UIa0000000"}, {"UL1345678S", "UIL0000000", "UIL0000000"},
      {"UL7345678S", "UIL1000000", "UIL1000000"}, {"Ui2345678S", "UIiM013010", "UIiM011010"},
  };
  for (const auto& [command, serialReply, usbReply] : cases) {
    EXPECT_EQ(ask(serial, command), serialReply) << command;
    EXPECT_EQ(ask(usb, command), usbReply) << command;
  }
}

TEST_F(Controllers, answerAtThePaceOfTheLineOneAfterTheOther) {
  write(serial, framed("UT") + framed("Z"));
  write(usb, framed("UT"));
  wait(2);
  EXPECT_EQ(driver.ReadLength(serial), 0);
  EXPECT_EQ(driver.ReadLength(usb), 10);
  // Four bytes to the controller, 3 ms to think, and about one byte a millisecond back.
  wait(10);
  EXPECT_EQ(driver.ReadLength(serial), 4);
  wait(5);
  EXPECT_EQ(driver.ReadLength(serial), 9) << "the second answer waits for the line";
  wait(10);
  EXPECT_EQ(read(serial), framed("QRMV0301"));
  EXPECT_EQ(read(serial), acknowledged);
}

TEST_F(Controllers, loseWhatHasArrivedWhenFlushedAndAllWhenTheLineChangesHands) {
  write(serial, framed("OI"));
  wait(100);
  write(serial, framed("UT"));
  driver.FlushReadBuffer(serial);
  wait(100);
  EXPECT_EQ(read(serial), framed("QRMV0301"));
  EXPECT_EQ(read(serial), "");

  write(serial, framed("UT") + "\x01O");
  driver.CloseCOMPort(serial);
  driver.ReopenCOMPort(serial);
  EXPECT_EQ(ask(serial, "I\x0D" + framed("Z")), acknowledged);
}

TEST_F(Controllers, silentOneOpensButNeitherAnswersNorFeels) {
  const auto silent = driver.OpenController(silentName);
  ASSERT_GT(silent, 1);
  EXPECT_EQ(ask(silent, framed("UT"), 1000), "");
  driver.SetCalPoint(silent, 0, 60, 3);
  request("touch 0.5 0.5");
  std::array<std::int32_t, 2> raw{};
  EXPECT_EQ(driver.CalCurrentPointReady(silent, raw.data()), 0);
  EXPECT_NE(driver.IsPenUp(silent), 0);
}

TEST_F(Controllers, faultsSpoilReplies) {
  const struct {
    std::string fault;
    std::string acknowledgement;
    std::string unitType;
  } cases[] = {
      {"no-answer", "", ""},
      {"slow-answer", "", ""},
      {"short-reply", "\x01", "\x01QRMV"},
      {"garbled-reply", "\x01`\x0D", "\x01\x01\x02\x1D\x06`c`a\x0D"},
      {"lost-bytes", "\x01\x30", "\x01QMV30\x0D"},
      {"unplugged", "", ""},
      {"error-returns", "error", "error"},
      {"store-fails", acknowledged, framed("QRMV0301")},
  };
  for (const auto& [fault, acknowledgement, unitType] : cases) {
    request("fault " + fault + " on " + serialName);
    EXPECT_EQ(ask(serial, framed("Z")), acknowledgement) << fault;
    EXPECT_EQ(ask(serial, framed("UT")), unitType) << fault;
    EXPECT_EQ(ask(usb, framed("Z")), acknowledged) << fault;
    request("fault " + fault + " off " + serialName);
    wait(1000);
    driver.FlushReadBuffer(serial);
    EXPECT_EQ(ask(serial, framed("UT")), framed("QRMV0301")) << fault;
  }
  request(std::string("fault store-fails on ") + serialName);
  EXPECT_EQ(ask(serial, framed("SP001234")), refused);
  EXPECT_EQ(ask(serial, framed("RD")), refused);
}

TEST_F(Controllers, extendedCalibrationIsTheControllersOwnAndKeptInItsParameters) {
  EXPECT_EQ(ask(serial, framed("CX")), acknowledged);
  for (const Point target : {Point{0.125, 0.875}, Point{0.875, 0.125}}) {
    click(target);
    wait(50);
    EXPECT_EQ(read(serial), framed("1"));
  }
  const double left = meanError(serialName);
  EXPECT_LT(left, 0.01);
  EXPECT_GT(left, 0.003) << "two points cannot take the skew out";
  click({0.5, 0.5});
  wait(50);
  EXPECT_EQ(read(serial), "") << "the calibration is over";

  const std::string gain = ask(serial, framed("GP02")).substr(2, 4);
  ask(serial, framed("SP024000"));
  EXPECT_GT(meanError(serialName), left);
  ask(serial, framed("SP02" + gain));
  EXPECT_EQ(meanError(serialName), left);
}

TEST_F(Controllers, extendedCalibrationFailsOnSpotsThatMakeNoMap) {
  const double before = meanError(serialName);
  // One too near in one direction, one that needs a gain beyond what a parameter holds.
  for (const Point second : {Point{0.51, 0.9}, Point{0.6, 0.4}}) {
    ask(serial, framed("CX"));
    click({0.5, 0.5});
    click(second);
    wait(50);
    EXPECT_EQ(read(serial), framed("1") + framed("2")) << second.x;
    EXPECT_EQ(meanError(serialName), before) << second.x;
  }
}

/// A controller alone on its line, asked and heard at a given time.
class ControllerOnALine : public testing::Test {
 protected:
  ControllerOnALine() { controller.connect(LineUser::port, now); }

  std::string ask(const std::string& bytes) {
    controller.receive({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, now);
    return later();
  }
  std::string later() {
    now += 200ms;
    const auto bytes = controller.take(1000, now);
    return {bytes.begin(), bytes.end()};
  }

  TimePoint now{};
  SimulatedController controller{rs232Device1};
};

TEST_F(ControllerOnALine, IsDeafAtEightBitsUntilItIsToldAtSeven) {
  controller.speak(seven);
  EXPECT_EQ(ask(framed("UT")), "");
  EXPECT_EQ(ask(framed("PN81")), "");
  EXPECT_EQ(controller.format(), seven);
  controller.setUserFormat(seven);
  EXPECT_EQ(ask(framed("UT")), framed("QRMV0301"));
  ask(framed("PN81"));
  EXPECT_EQ(controller.format(), eight);
  controller.setUserFormat(eight);
  EXPECT_EQ(ask(framed("UT")), framed("QRMV0301"));
}

TEST_F(ControllerOnALine, SendsGarbageToAListenerOfAnotherFormat) {
  const struct {
    LineFormat sent;
    LineFormat listener;
    std::string heard;
  } cases[] = {
      {eight, eight, "\x0D\xD8"},
      {seven, seven, "\x0D\x58"},
      // The first of two stop bits stands in the eighth data bit's place.
      {seven, eight, "\x8D\xD8"},
      // A byte is lost when there is no stop bit where one is expected.
      {eight, seven, "\x58"},
  };
  for (const auto& [sent, listener, heard] : cases) {
    controller.speak(sent);
    controller.setUserFormat(listener);
    controller.say(std::array<std::uint8_t, 2>{0x0D, 0xD8}, now);
    EXPECT_EQ(later(), heard);
  }
}

TEST_F(ControllerOnALine, SpoilsSomeReportsWhenNoisy) {
  controller.faults().set(Fault::noisyReports, true);
  controller.panel().noise = 0;
  std::string stream;
  controller.touch({0.5, 0.5}, now);
  for (int i = 0; i < 10; ++i)
    stream += later();
  EXPECT_NE(stream.find("\x3C\xF3"), std::string::npos);
  EXPECT_NE(stream.size() % 5, 0U);
  controller.lift(now);
  controller.faults().set(Fault::noAnswer, true);
  later();
  controller.say(std::array<std::uint8_t, 1>{0x41}, now);
  EXPECT_EQ(later(), "");
}

TEST_F(ControllerOnALine, ReportsTouchesInTheFormatThatWasSet) {
  const struct {
    std::string command;
    std::string touching;
    std::string released;
    std::string place;
  } cases[] = {
      {framed("FT"), "\xD8", "\x98", "\x7D\x3F\x22\x40"},
      {framed("FR"), "\xC8", "\x88", "\x3F\x7D\x40\x22"},
      {framed("CR"), "\xC8", "\x88", "\x3F\x7D\x40\x22"},
      {framed("FD"), "T", "R", "08189,08226\x0D"},
      {framed("FH"), "T", "R", "1FFD,2022\x0D"},
      {"Ub2345678S", "UT\x82", "UT\x84", std::string("\xF7\x7F\x88\x80\0\0S", 7)},
  };
  controller.panel() = PanelTraits{};
  for (const auto& [command, touching, released, place] : cases) {
    ask(framed("R"));
    ask(command);
    // Counts 2047 and 2056, so that the two coordinates and their halves differ.
    controller.touch({2047.4 / 4095, 2055.6 / 4095}, now);
    controller.lift(now);
    EXPECT_EQ(later(), touching + place + released + place) << command;
  }
}

TEST_F(ControllerOnALine, ReportsAsOftenAsItsModeSays) {
  for (const auto& [mode, reports] : {std::pair{"MS", 7U}, {"MP", 2U}, {"MI", 0U}}) {
    ask(framed(mode));
    controller.touch({0.5, 0.5}, now);
    now += 55ms;
    controller.lift(now);
    EXPECT_EQ(later().size(), 5 * reports) << mode;
    EXPECT_FALSE(controller.nextDue()) << "a line at rest must let its thread sleep";
  }
}

TEST_F(ControllerOnALine, PilesUpNoEndlessBacklogThatNobodyReads) {
  controller.touch({0.5, 0.5}, now);
  now += 24h;
  EXPECT_LE(controller.arrived(now), 4096U);
  EXPECT_GT(*controller.nextDue(), TimePoint{});
}

}  // namespace
}  // namespace touch::simulator
