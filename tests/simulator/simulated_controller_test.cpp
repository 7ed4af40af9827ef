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

const std::string acknowledged = framed("0");
const std::string refused = framed("1");

TEST_F(Controllers, answerEveryCommand) {
  const struct {
    std::string command;
    std::string serialReply;
    std::string usbReply;
  } cases[] = {
      {framed("UT"), framed("QRMV0301"), framed("QMRV1000")},
      {framed("iU"), framed("QRMV0301"), framed("QMRV1000")},
      {framed("OI"), framed("M0130100"), framed("M0110100")},
      {framed("Uu"), "UIQRMV0302", "UIQMRV1001"},
      {"\x01Uu23456\x0DS", "UIQRMV0302", "UIQMRV1001"},
      {framed("MP"), acknowledged, acknowledged},
      {framed("MT"), framed("MP"), framed("MP")},
      {framed("SE3"), acknowledged, acknowledged},
      {framed("PO"), acknowledged, acknowledged},
      {framed("OS"), framed("PPO3"), framed("PPO3")},
      {framed("iS"), acknowledged, acknowledged},
      {framed("MT"), framed("MS"), framed("MS")},
      {framed("GP81"), framed("00000"), framed("00000")},
      {framed("GP80"), framed("00004"), framed("00005")},
      {framed("iGbf"), framed("0FFFF"), framed("0FFFF")},
      {framed("GP40"), refused, refused},
      {framed("SP081AFF"), acknowledged, acknowledged},
      {framed("GP08"), framed("01AFF"), framed("01AFF")},
      {framed("iW081234"), acknowledged, acknowledged},
      {framed("GP08"), framed("01234"), framed("01234")},
      {framed("PL"), acknowledged, acknowledged},
      {framed("SP080000"), refused, refused},
      {framed("GP08"), framed("01234"), framed("01234")},
      {framed("R"), acknowledged, acknowledged},
      {framed("SP080000"), acknowledged, acknowledged},
      {framed("RD"), acknowledged, acknowledged},
      {framed("GP08"), framed("00064"), framed("00050")},
      {framed("XX"), refused, refused},
      {"Ua2345678S", "UIa0000000", "UIa0000000"},
      {"UL1345678S", "UIL0000000", "UIL0000000"},
      {"UL7345678S", "UIL1000000", "UIL1000000"},
      {"Ui2345678S", "UIiM013010", "UIiM011010"},
  };
  for (const auto& [command, serialReply, usbReply] : cases) {
    EXPECT_EQ(ask(serial, command), serialReply) << command;
    EXPECT_EQ(ask(usb, command), usbReply) << command;
  }
}

TEST_F(Controllers, putSplitFramesTogether) {
  write(serial, "\x01U");
  wait(50);
  EXPECT_EQ(read(serial), "");
  EXPECT_EQ(ask(serial, "T\x0D"), framed("QRMV0301"));
}

TEST_F(Controllers, answerAtThePaceOfTheLine) {
  write(serial, framed("UT"));
  write(usb, framed("UT"));
  wait(2);
  EXPECT_EQ(driver.ReadLength(serial), 0);
  EXPECT_EQ(driver.ReadLength(usb), 10);
  // Four bytes to the controller, 3 ms to think, and about one byte a millisecond back.
  wait(10);
  EXPECT_EQ(driver.ReadLength(serial), 4);
  wait(10);
  EXPECT_EQ(driver.ReadLength(serial), 10);
}

TEST_F(Controllers, answerOneAfterTheOther) {
  write(serial, framed("UT") + framed("Z"));
  wait(17);
  EXPECT_EQ(driver.ReadLength(serial), 9) << "the second answer waits for the line";
  wait(10);
  EXPECT_EQ(read(serial), framed("QRMV0301"));
  EXPECT_EQ(read(serial), acknowledged);
}

TEST_F(Controllers, loseWhatIsOnTheLineWhenItChangesHands) {
  write(serial, framed("UT") + "\x01O");
  driver.CloseCOMPort(serial);
  driver.ReopenCOMPort(serial);
  EXPECT_EQ(ask(serial, "I\x0D" + framed("Z")), acknowledged);
}

TEST_F(Controllers, flushDropsOnlyWhatHasArrived) {
  write(serial, framed("OI"));
  wait(100);
  write(serial, framed("UT"));
  driver.FlushReadBuffer(serial);
  wait(100);
  EXPECT_EQ(read(serial), framed("QRMV0301"));
  EXPECT_EQ(read(serial), "");
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
      {"lost-bytes",
       "\x01"
       "0",
       "\x01QMV30\x0D"},
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

TEST_F(Controllers, extendedCalibrationIsTheControllersOwn) {
  EXPECT_EQ(ask(serial, framed("CX")), acknowledged);
  click({0.125, 0.875});
  wait(50);
  EXPECT_EQ(read(serial), framed("1"));
  click({0.875, 0.125});
  wait(50);
  EXPECT_EQ(read(serial), framed("1"));
  const double left = meanError(serialName);
  EXPECT_LT(left, 0.01);
  EXPECT_GT(left, 0.003) << "two points cannot take the skew out";
  click({0.5, 0.5});
  wait(50);
  EXPECT_EQ(read(serial), "") << "the calibration is over";
}

TEST_F(Controllers, extendedCalibrationFailsOnTheSameSpot) {
  const double before = meanError(serialName);
  ask(serial, framed("CX"));
  click({0.5, 0.5});
  click({0.51, 0.9});
  wait(50);
  EXPECT_EQ(read(serial), framed("1") + framed("2"));
  EXPECT_EQ(meanError(serialName), before);
}

TEST_F(Controllers, parametersCarryTheCalibration) {
  ask(serial, framed("CX"));
  click({0.125, 0.875});
  click({0.875, 0.125});
  wait(50);
  read(serial);
  const double calibrated = meanError(serialName);
  const std::string gain = ask(serial, framed("GP02")).substr(2, 4);
  ask(serial, framed("SP024000"));
  EXPECT_GT(meanError(serialName), calibrated);
  ask(serial, framed("SP02" + gain));
  EXPECT_EQ(meanError(serialName), calibrated);
}

TEST(ControllerModels, fitTheDriversBuffers) {
  for (const ControllerModel& model : controllerModels) {
    EXPECT_LT(model.name.size(), 20U) << model.name;
    EXPECT_LE(model.identity.size(), 8U) << model.name;
    EXPECT_LE(model.unitType.size(), 8U) << model.name;
    EXPECT_LE(model.queryReply.size(), 10U) << model.name;
  }
}

TEST(SerialReports, comeInTheFormatThatWasSet) {
  const struct {
    std::string command;
    std::string touching;
    std::string released;
  } cases[] = {
      {framed("FT"), "\xD8" + std::string("\x7D\x3F\x22\x40", 4),
       "\x98" + std::string("\x7D\x3F\x22\x40", 4)},
      {framed("FR"), "\xC8" + std::string("\x3F\x7D\x40\x22", 4),
       "\x88" + std::string("\x3F\x7D\x40\x22", 4)},
      {framed("CR"), "\xC8" + std::string("\x3F\x7D\x40\x22", 4),
       "\x88" + std::string("\x3F\x7D\x40\x22", 4)},
      {framed("FD"), "T08189,08226\x0D", "R08189,08226\x0D"},
      {framed("FH"), "T1FFD,2022\x0D", "R1FFD,2022\x0D"},
      {"Ub2345678S", std::string("UT\x82\xF7\x7F\x88\x80\0\0S", 10),
       std::string("UT\x84\xF7\x7F\x88\x80\0\0S", 10)},
  };
  for (const auto& [command, touching, released] : cases) {
    TimePoint now{1s};
    SimulatedController controller(rs232Device1);
    controller.panel() = PanelTraits{};
    controller.connect(LineUser::port, now);
    const std::vector<std::uint8_t> bytes(command.begin(), command.end());
    controller.receive(bytes, now);
    now += 100ms;
    controller.take(100, now);
    // Counts 2047 and 2056, so that the two coordinates and their halves differ.
    controller.touch({2047.4 / 4095, 2055.6 / 4095}, now);
    controller.lift(now);
    const auto sent = controller.take(100, now + 100ms);
    EXPECT_EQ(std::string(sent.begin(), sent.end()), touching + released) << command;
  }
}

TEST(SerialReports, followTheMode) {
  const struct {
    std::string command;
    std::size_t reports;
  } cases[] = {{"MS", 7}, {"MP", 2}, {"MI", 0}};
  for (const auto& [command, reports] : cases) {
    TimePoint now{1s};
    SimulatedController controller(rs232Device1);
    controller.connect(LineUser::port, now);
    const std::string frame = framed(command);
    controller.receive(std::vector<std::uint8_t>(frame.begin(), frame.end()), now);
    now += 100ms;
    controller.take(100, now);
    controller.touch({0.5, 0.5}, now);
    now += 55ms;
    controller.lift(now);
    EXPECT_EQ(controller.take(100, now + 100ms).size(), 5 * reports) << command;
    EXPECT_FALSE(controller.nextDue()) << "a line at rest must let its thread sleep";
  }
}

TEST(SerialReports, nobodysBacklogGrowsWithoutBound) {
  TimePoint now{1s};
  SimulatedController controller(rs232Device1);
  controller.connect(LineUser::port, now);
  controller.touch({0.5, 0.5}, now);
  now += 24h;
  EXPECT_LE(controller.arrived(now), 4096U);
  EXPECT_GT(*controller.nextDue(), TimePoint{});
}

}  // namespace
}  // namespace touch::simulator
