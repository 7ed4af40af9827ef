#include "tests/simulator/driver_bench.h"

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

}  // namespace
}  // namespace touch::simulator
