#include "simulator/controller/simulated_controller.h"

#include "simulator/controller/controllers.h"
#include "simulator/controller/fault_times.h"
#include "tests/simulator/driver/driver_bench.h"

namespace touch::simulator {
namespace {

using namespace std::chrono_literals;

constexpr auto eight = LineFormat::eightN1;
constexpr auto seven = LineFormat::sevenN2;
constexpr LineFormat even{7, LineFormat::Parity::even, 1};

const std::string acknowledged = framed("0");
const std::string refused = framed("1");
const std::string serialUnitType = framed("QRMV0301");

class Controllers : public DriverBench {
 protected:
  std::int32_t serial = open(serialName);
  std::int32_t usb = open(usbName);
};

TEST_F(Controllers, answerAtThePaceOfTheLineUntilItIsFlushedOrChangesHands) {
  write(serial, framed("UT") + framed("Z"));
  write(usb, framed("UT"));
  // Four bytes to the controller, 3 ms to think, and about one byte a millisecond back.
  for (const auto& [milliseconds, arrived] : {std::pair{2, 0}, {10, 4}, {5, 9}}) {
    wait(milliseconds);
    EXPECT_EQ(driver.ReadLength(serial), arrived);
    EXPECT_EQ(driver.ReadLength(usb), 10);
  }
  driver.FlushReadBuffer(serial);
  EXPECT_EQ(ask(serial, ""), '\r' + acknowledged) << "the second answer waits for the line";

  write(serial, framed("UT") + "\x01O");
  driver.CloseCOMPort(serial);
  driver.ReopenCOMPort(serial);
  EXPECT_EQ(ask(serial, "I\r" + framed("Z")), acknowledged);
}

TEST_F(Controllers, faultsSpoilReplies) {
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"no-answer", "", ""},
      {"slow-answer", "", ""},
      {"short-reply", "\x01", "\x01QRMV"},
      {"garbled-reply", "\x01`\r", "\x01\x01\x02\x1D\x06`c`a\r"},
      {"lost-bytes", "\x01\x30", "\x01QMV30\r"},
      {"unplugged", "", ""},
      {"error-returns", "error", "error"},
      {"store-fails", acknowledged, serialUnitType},
  };
  for (const auto& [fault, acknowledgement, unitType] : cases) {
    request("fault " + fault + " on " + serialName);
    EXPECT_EQ(ask(serial, framed("Z")), acknowledgement) << fault;
    EXPECT_EQ(ask(serial, framed("UT")), unitType) << fault;
    EXPECT_EQ(ask(usb, framed("Z")), acknowledged) << fault;
    request("fault " + fault + " off " + serialName);
    wait(1000);
    driver.FlushReadBuffer(serial);
    EXPECT_EQ(ask(serial, framed("UT")), serialUnitType) << fault;
  }
  request("fault store-fails on " + serialName);
  EXPECT_EQ(ask(serial, framed("SP001234")), refused);
  EXPECT_EQ(ask(serial, framed("RD")), refused);
}

TEST_F(Controllers, calibrateThemselvesOnTwoPointsAndKeepThatInTheirParameters) {
  const auto calibrate = [this](Point first, Point second) {
    EXPECT_EQ(ask(serial, framed("CX")), acknowledged);
    click(first);
    click(second);
    wait(50);
    return read(serial);
  };
  EXPECT_EQ(calibrate({0.125, 0.875}, {0.875, 0.125}), framed("1") + framed("1"));
  const double left = meanError(serialName);
  EXPECT_LT(left, 0.01);
  EXPECT_GT(left, 0.003) << "two points cannot take the skew out";
  const std::string gain = ask(serial, framed("GP02")).substr(2, 4);
  ask(serial, framed("SP024000"));
  EXPECT_GT(meanError(serialName), left);
  ask(serial, framed("SP02" + gain));
  // One too near in one direction, one that needs a gain beyond what a parameter holds.
  for (const Point second : {Point{0.51, 0.9}, Point{0.6, 0.4}}) {
    EXPECT_EQ(calibrate({0.5, 0.5}, second), framed("1") + framed("2")) << second.x;
    EXPECT_EQ(meanError(serialName), left) << second.x;
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
    now += 400ms;
    const auto bytes = controller.take(1000, now);
    return {bytes.begin(), bytes.end()};
  }
  /// Commands or replies with blanks between: those of ten characters as they are, the rest framed.
  static std::string packets(const std::string& texts) {
    std::string bytes;
    std::istringstream words(texts);
    for (std::string word; words >> word;)
      bytes += word.size() == 10 && word.starts_with('U') ? word : framed(word);
    return bytes;
  }

  TimePoint now{};
  SimulatedController controller{rs232Device1};
};

TEST_F(ControllerOnALine, AnswersCommandsByteForByte) {
  const std::tuple<const ControllerModel*, const char*, const char*> cases[] = {
      {&rs232Device1, "UT iU OI iO", "QRMV0301 QRMV0301 M0130100 M0130100"},
      {&rs232Device1, "Uu Uu23456 Ui2345678S", "UIQRMV0302 UIQRMV0302 UIiM013010"},
      {&usbDevice2, "UT OI Uu Ui2345678S", "QMRV1000 M0110100 UIQMRV1001 UIiM011010"},
      {&usbDevice3Silent, "UT Z Ua2345678S", ""},
      {&rs232Device1, "MP MT iS MT MI MT SE3 PO MP OS", "0 MP 0 MS 0 MI 0 0 0 PPO3"},
      {&rs232Device1, "GP02 GP3F GP40 GP7F GP81 iGbf GPC0", "04000 0FFFF 1 1 00000 0FFFF 1"},
      {&rs232Device1, "SP081AFF GP08 iW081234 PL SP080000 GP08 R SP080000 GP08",
       "0 01AFF 0 0 1 01234 0 0 00000"},
      {&rs232Device1, "SP080000 SP801234 RD GP08 GP80 RF GP80", "0 0 0 00064 01234 0 00004"},
      {&usbDevice2, "SP080000 SP801234 RD GP08 GP80 RF GP80", "0 0 0 00050 01234 0 00005"},
      {&rs232Device1, "Ua2345678S UL1345678S Uo2345678S", "UIa0000000 UIL0000000 UIoINHOUSE"},
      {&rs232Device1, "UL2345678S UM3345678S Uz2345678S U Z", "UIL1000000 UIM1000000 1 0"},
      {&rs232Device1, "XX r RDX GP GP0 GP0G GP012 SP00123 SP0012345", "1 1 1 1 1 1 1 1 1"},
      {&rs232Device1, "SE SE5 SEA iX Uu2345 N72toN81", "1 1 1 1 1 1"},
  };
  for (const auto& [model, commands, replies] : cases) {
    controller = SimulatedController(*model);
    EXPECT_EQ(ask(packets(commands)), packets(replies)) << commands << " to " << model->name;
  }
}

TEST_F(ControllerOnALine, FindsCommandsAmongGarbage) {
  const std::pair<std::string, std::string> cases[] = {
      {"noise\r\n" + framed("Z") + "noise", acknowledged},
      {"\x01O\x01OI\r", framed("M0130100")},
      {"\x01" + std::string(200, 'x') + '\r' + framed("Z"), acknowledged},
      {"\x01\r", refused},
      {"UUa2345678S", "UIa0000000"},
      {"Ux2345678SUb2345678S", "UIb0000000"},
      {"Ua23456789", ""},
      {"Ua23" + framed("UT"), serialUnitType},
      {"Ua23\rUi2345678S", "UIiM013010"},
      {"\x01Uu23456\rS" + framed("Z"), "UIQRMV0302" + acknowledged},
  };
  for (const auto& [bytes, replies] : cases)
    EXPECT_EQ(ask(bytes), replies) << bytes;
}

TEST_F(ControllerOnALine, SendsGarbageToAnotherFormatAndIsDeafToIt) {
  const std::tuple<LineFormat, LineFormat, std::string> cases[] = {
      {eight, eight, "\x0D\xD8"},
      {seven, seven, "\x0D\x58"},
      // A byte is lost when there is no stop bit where one is expected.
      {eight, seven, "\x58"},
      // An even parity bit stands there: three ones in 0D, three in 58.
      {even, eight, "\x8D\xD8"},
      {even, {7, LineFormat::Parity::odd, 1}, ""},
      // The eighth bit counts as the parity: it is 0, and should be 1; it is 1, as it should be.
      {eight, even, "\x58"},
      {eight, {8, LineFormat::Parity::even, 1}, "\x0D"},
      {{8, LineFormat::Parity::odd, 2}, eight, "\xD8"},
      {eight, {5, LineFormat::Parity::none, 1}, ""},
      // The first of two stop bits stands in the eighth data bit's place.
      {seven, eight, "\x8D\xD8"},
  };
  for (const auto& [sent, listener, heard] : cases) {
    controller.speak(sent);
    controller.setUserFormat(listener);
    controller.say(std::array<std::uint8_t, 2>{0x0D, 0xD8}, now);
    EXPECT_EQ(later(), heard);
  }
  EXPECT_EQ(ask(framed("PN81")), "");
  controller.setUserFormat(seven);
  EXPECT_EQ(ask(framed("UT")), serialUnitType);
  ask(framed("PN81"));
  controller.setUserFormat(eight);
  EXPECT_EQ(ask(framed("UT")), serialUnitType);
}

TEST_F(ControllerOnALine, ReportsTouchesInTheFormatThatWasSet) {
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      {framed("FT"), "\xD8", "\x98", "\x7D\x3F\x22\x40"},
      {framed("FR"), "\xC8", "\x88", "\x3F\x7D\x40\x22"},
      {framed("CR"), "\xC8", "\x88", "\x3F\x7D\x40\x22"},
      {framed("FD"), "T", "R", "08189,08226\r"},
      {framed("FH"), "T", "R", "1FFD,2022\r"},
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
  ask(framed("MS"));
  controller.faults().set(Fault::noisyReports, true);
  controller.touch({0.5, 0.5}, now);
  const std::string stream = later();
  EXPECT_NE(stream.find("\x3C\xF3"), std::string::npos) << "noise in between";
  EXPECT_NE(stream.size() % 5, 0U) << "some lack a byte";
  now += 24h;
  EXPECT_LE(controller.arrived(now), 4096U) << "nobody reads";
  EXPECT_GT(*controller.nextDue(), TimePoint{});
}

TEST(FaultTimes, comeAndGo) {
  const std::tuple<std::string_view, double, bool> cases[] = {
      {"no-answer", 0, true},           {"no-answer@5-10", 4.9, false},
      {"no-answer@5-10", 5, true},      {"no-answer@5-10", 10, false},
      {"no-answer@5-10", 65, false},    {"no-answer@5-10/60", 65, true},
      {"no-answer@0-0.5/1", 7.6, false}};
  for (const auto& [text, seconds, isThere] : cases)
    EXPECT_EQ(parseFaultTimes(text).value().isThere(std::chrono::duration<double>(seconds)),
              isThere)
        << text << ' ' << seconds;
  for (const std::string_view text :
       {"", "none", "no-answer@", "no-answer@5", "no-answer@5-5", "no-answer@-1-5",
        "no-answer@5-10/9", "no-answer@5-10/", "no-answer@nan-1", "no-answer@1-99999999"})
    EXPECT_FALSE(parseFaultTimes(text)) << text;
}

TEST(Speeds, mustMatch) {
  SimulatedController controller{usbDevice2};
  TimePoint now{};
  controller.connect(LineUser::port, now);
  controller.setSpeed(19200);
  for (const auto& [speed, answered] : {std::pair{9600, 0U}, {19200, 10U}}) {
    controller.setUserSpeed(speed);
    const std::string command = framed("UT");
    controller.receive(std::vector<std::uint8_t>(command.begin(), command.end()), now);
    now += 1s;
    EXPECT_EQ(controller.take(100, now).size(), answered) << speed;
  }
  controller.touch({0.5, 0.5}, now);
  now += 10ms;
  EXPECT_EQ(controller.take(1, now), std::vector<std::uint8_t>{0xD8});
  controller.setUserSpeed(9600);
  now += 10ms;
  EXPECT_NE(controller.take(1, now), std::vector<std::uint8_t>{0xD8}) << "garbage";
}

}  // namespace
}  // namespace touch::simulator
