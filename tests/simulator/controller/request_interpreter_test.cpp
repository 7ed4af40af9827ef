#include "tests/simulator/driver/driver_bench.h"

namespace touch::simulator {
namespace {

class Requests : public DriverBench {
 protected:
  void panel(std::initializer_list<const char*> changes) {
    for (const std::string change : changes)
      request("panel " + change + ' ' + usbName);
  }
  std::string map(const std::string& place) { return request("map " + place + ' ' + usbName); }
  std::string report(const std::string& place) {
    return request("report " + place + ' ' + usbName);
  }
};

TEST_F(Requests, areRefusedWithAReasonWhenOutOfForm) {
  const std::pair<const char*, const char*> cases[] = {
      {"   ", "unknown request \"\""},
      {"touch 0.5", "expected \"touch X Y\""},
      {"touch 0.5 0.5 0.5", "expected \"touch X Y\""},
      {"touch 0,5 0.5", "expected a fraction from 0 to 1, found \"0,5\""},
      {"map nan 0 USB DEVICE 2", "expected a fraction from 0 to 1, found \"nan\""},
      {"fault unplugged on", "expected \"fault FAULT on|off NAME\""},
      {"fault sticky on USB DEVICE 2", "no fault is called \"sticky\"; see faults"},
      {"fault unplugged maybe USB DEVICE 2", "expected on or off, found \"maybe\""},
      {"panel bend 1 USB DEVICE 2", "a panel has no \"bend\""},
      {"panel skew x USB DEVICE 2", "expected a number from -1.000000 to 1.000000, found \"x\""},
      {"clock fast", "expected manual or real, found \"fast\""},
      {"advance 1e300", "expected milliseconds from 0 to a day, found \"1e300\""},
      {"error USB", "no controller is called \"USB\""},
      {"fault unplugged on USB", "no controller is called \"USB\""},
      {"panel skew 0 USB", "no controller is called \"USB\""},
  };
  for (const auto& [text, reason] : cases) {
    const auto answer = driver.answer(text);
    EXPECT_FALSE(answer.done) << text;
    EXPECT_EQ(answer.text, reason) << text;
  }
  request("clock real");
  EXPECT_EQ(driver.answer("advance 10").text, "the clock is not manual");
}

TEST_F(Requests, makeThePanelWhatTheySayAndNewAgain) {
  const std::string asNew = request("error " + usbName);
  EXPECT_EQ(report("0.2 0.8"), SimulatedDriver().answer("report 0.2 0.8 USB DEVICE 2").text)
      << "equal touches give equal readings";
  panel({"offset-x 0.1", "gain-x 0.5", "skew 0.25", "offset-y 0", "gain-y 1", "noise 0"});
  EXPECT_EQ(map("0 0"), "0.100000 0.000000");
  EXPECT_EQ(map(" 1  0.5  "), "0.725000 0.500000");
  panel({"skew 0", "gain-x 1", "offset-x 0", "offset-y 0.2"});
  // Where the converter's range ends, the error shrinks: a grid row is 0.125, the panel's height
  // 0.75 of its width.
  EXPECT_EQ(request("error " + usbName), "0.127083 0.150000");

  panel({"offset-y 0", "bow 0.04", "dead-strip 0.1"});
  EXPECT_EQ(map("0 0.5"), "0.040000 0.500000");
  EXPECT_EQ(map("0.5 0"), "0.500000 0.040000");
  EXPECT_EQ(map("1 1"), "1.000000 1.000000");
  EXPECT_EQ(map("0.75 0.75"), "0.735000 0.735000");
  EXPECT_EQ(report("0.5 0.5"), "0.500122 0.500122") << "in whole counts";
  EXPECT_EQ(report("0.9 0.37"), "");
  EXPECT_NE(report("0.9 0.38"), "");
  panel({"noise 0.01"});
  EXPECT_NE(report("0.2 0.8"), report("0.2 0.8"));

  const auto handle = open(usbName);
  request("touch 0.5 0.8");
  EXPECT_EQ(driver.IsPenUp(handle), 0);
  request("touch 0.5 0.325");
  EXPECT_NE(driver.IsPenUp(handle), 0) << "the finger slid onto the strip";

  panel({"offset-x new", "offset-y new", "gain-x new", "gain-y new", "skew new", "noise new",
         "bow new", "dead-strip new"});
  EXPECT_EQ(request("error " + usbName), asNew);
}

TEST_F(Requests, resetMakesEverythingNewButKeepsHandles) {
  const auto handle = open(serialName);
  const double before = meanError(serialName);
  EXPECT_THAT(request("faults"), testing::HasSubstr("\ngarbled-reply\n"));
  request("panel skew 0.3 " + serialName);
  request("fault garbled-reply on " + serialName);
  request("touch 0.5 0.5");
  driver.SetRotation(handle, 2);
  ask(handle, framed("SP001234"));
  request("reset");
  EXPECT_EQ(meanError(serialName), before);
  EXPECT_NE(driver.IsPenUp(handle), 0);
  EXPECT_EQ(driver.GetRotation(handle), 0);
  EXPECT_EQ(ask(handle, framed("GP00")), framed("00301"));
}

TEST_F(Requests, describeAControllerThatTakesThePlaceOfAll) {
  const std::pair<const char*, const char*> refused[] = {
      {"become colour red", "no property is called \"colour\""},
      {"become name DEVICE 1", "expected a name with RS232 or USB"},
      {"become name USB DEVICE 1234567890", "expected a name with RS232 or USB"},
      {"become identity M01301000", "expected 1 to 8 characters"},
      {"become unit-type a b", "expected 1 to 8 characters"},
      {"become word 40 1234", "expected an address of two"},
      {"become word 02 123", "expected an address of two"},
      {"become setting rotation 4", "expected a number in range, found \"4\""},
      {"become setting colour 1", "no setting is called"},
      {"become reports maybe", "expected on or off"},
      {"become rate 0", "expected a number in range"},
      {"become noise 0.1", "expected a number in range, found \"\""},
      {"become drift nan 0", "expected a number in range, found \"nan\""},
      {"become directions 1 0 0 0 1 0 0", "expected no more, found \"0\""},
      {"become dead 0 0 1 inf", "expected a number in range, found \"inf\""},
      {"become error-x row 0 0", "expected columns"},
      {"become error-x columns 0 0.5 0.5", "ascending"},
      {"become error-x cell 0 0", "expected columns or row"},
  };
  for (const auto& [text, reason] : refused) {
    const auto answer = driver.answer(text);
    EXPECT_FALSE(answer.done) << text;
    EXPECT_THAT(answer.text, testing::HasSubstr(reason)) << text;
  }
  EXPECT_FALSE(driver.answer("become error-x columns" + std::string(5000, ' ') + '1').done);
  request("become error-x columns 0 1");
  EXPECT_EQ(driver.answer("become done").text, "expected rows of an error, found columns only");
  EXPECT_EQ(driver.GetExistControllers(), 3) << "and all is forgotten";

  const auto handle = open(serialName);
  for (const char* const property :
       {"name "
        "USB DEVICE 7",
        "identity M0990100", "word 05 0100", "rate 50", "noise 0 0", "error-x columns 0 1",
        "error-x row 0 0.01 0.03", "error-x row 1 0.01 0.03", "dead 0.8 0.8 0.9 0.9",
        "drift 0 0.001", "setting rotation 2"})
    request(std::string("become ") + property);
  request("become done");
  EXPECT_FALSE(driver.answer("become rate 60").done) << "only once";
  EXPECT_EQ(driver.GetExistControllers(), 1);
  EXPECT_EQ(ask(handle, framed("OI")), "") << "its controller is gone";
  const auto described = open("USB DEVICE 7");
  EXPECT_EQ(ask(described, framed("OI")), framed("M0990100"));
  EXPECT_EQ(driver.GetRotation(described), 2);
  EXPECT_EQ(request("rate USB DEVICE 7"), "50.000000");

  const auto expectMiddleAt = [&](double x, double y) {
    std::istringstream place(request("report 0.5 0.5 USB DEVICE 7"));
    double reportedX = 0;
    double reportedY = 0;
    place >> reportedX >> reportedY;
    EXPECT_NEAR(reportedX, x, 2e-5);
    EXPECT_NEAR(reportedY, y, 2e-5);
  };
  expectMiddleAt(0.52, 0.5);
  EXPECT_EQ(request("report 0.85 0.85 USB DEVICE 7"), "");
  wait(10000);
  expectMiddleAt(0.52, 0.51);
  // These words mean no calibration that the simulator would write; others count as its own.
  ask(described, framed("SP054000"));
  EXPECT_THAT(request("map 0.5 0.5 USB DEVICE 7"), testing::Not(testing::StartsWith("0.5200")));
  request("reset");
  EXPECT_THAT(request("map 0.5 0.5 USB DEVICE 7"), testing::StartsWith("0.5200"));
  EXPECT_EQ(driver.GetRotation(described), 2) << "as when new, which is as described";
}

}  // namespace
}  // namespace touch::simulator
