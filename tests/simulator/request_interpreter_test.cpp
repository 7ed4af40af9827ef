#include <gmock/gmock.h>

#include <string>

#include "tests/simulator/driver_bench.h"
#include "tests/support/comma_locale.h"

namespace touch::simulator {
namespace {

class Requests : public DriverBench {
 protected:
  void panel(std::initializer_list<std::string> changes) {
    for (const std::string& change : changes)
      request("panel " + change + ' ' + usbName);
  }
  std::string map(const std::string& place) { return request("map " + place + ' ' + usbName); }
  std::string report(const std::string& place) {
    return request("report " + place + ' ' + usbName);
  }
  std::string error(const std::string& name = usbName) { return request("error " + name); }
};

TEST_F(Requests, areRefusedWithAReasonWhenOutOfForm) {
  const std::pair<const char*, const char*> cases[] = {
      {"   ", "unknown request \"\""},
      {"tuch 0 0", "unknown request \"tuch\""},
      {"touch 0.5", "expected \"touch X Y\""},
      {"touch 0.5 0.5 0.5", "expected \"touch X Y\""},
      {"touch 0,5 0.5", "expected a fraction from 0 to 1, found \"0,5\""},
      {"touch 0.5 1.01", "expected a fraction from 0 to 1, found \"1.01\""},
      {"map nan 0 USB DEVICE 2", "expected a fraction from 0 to 1, found \"nan\""},
      {"report 0.5x 0 USB DEVICE 2", "expected a fraction from 0 to 1, found \"0.5x\""},
      {"map 0 0", "expected \"map X Y NAME\""},
      {"fault unplugged on", "expected \"fault FAULT on|off NAME\""},
      {"fault sticky on USB DEVICE 2", "no fault is called \"sticky\"; see faults"},
      {"fault unplugged maybe USB DEVICE 2", "expected on or off, found \"maybe\""},
      {"panel bend 1 USB DEVICE 2", "a panel has no \"bend\""},
      {"panel skew x USB DEVICE 2", "expected a number from -1.000000 to 1.000000, found \"x\""},
      {"clock fast", "expected manual or real, found \"fast\""},
      {"advance -1", "expected milliseconds from 0 to a day, found \"-1\""},
      {"advance 1e300", "expected milliseconds from 0 to a day, found \"1e300\""},
  };
  for (const auto& [text, reason] : cases) {
    const auto answer = driver.simulate(text);
    EXPECT_FALSE(answer.done) << text;
    EXPECT_EQ(answer.text, reason) << text;
  }
  for (const char* about :
       {"error", "map 0 0", "report 0 0", "port", "fault unplugged on", "panel skew 0"}) {
    EXPECT_EQ(driver.simulate(std::string(about) + " USB").text, "no controller is called \"USB\"");
  }
  request("clock real");
  EXPECT_EQ(driver.simulate("advance 10").text, "the clock is not manual");
}

TEST_F(Requests, makeThePanelWhatTheySay) {
  panel({"offset-x 0.1", "gain-x 0.5", "skew 0.25", "offset-y 0", "gain-y 1"});
  EXPECT_EQ(map("0 0"), "0.100000 0.000000");
  EXPECT_EQ(map(" 1  0.5  "), "0.725000 0.500000");
  {
    const test::CommaLocale german;
    EXPECT_EQ(map("0 1"), "0.350000 1.000000");
  }
  panel({"skew 0", "gain-x 1", "offset-x 0"});
  EXPECT_EQ(error(), "0.000000 0.000000");
  panel({"offset-y 0.2"});
  // Where the converter's range ends, the error shrinks: a grid row is 0.125, the panel's height
  // 0.75 of its width.
  EXPECT_EQ(error(), "0.127083 0.150000");
}

TEST_F(Requests, makeThePanelBowDieAndBeNewAgain) {
  const std::string asNew = error();
  EXPECT_EQ(report("0.2 0.8"), SimulatedDriver().simulate("report 0.2 0.8 USB DEVICE 2").text)
      << "equal touches give equal readings";
  panel({"offset-x 0", "offset-y 0", "gain-x 1", "gain-y 1", "skew 0", "noise 0", "bow 0.04",
         "dead-strip 0.1"});
  const std::pair<const char*, const char*> cases[] = {
      {"0 0.5", "0.040000 0.500000"},    {"1 0.5", "0.960000 0.500000"},
      {"0.5 0", "0.500000 0.040000"},    {"0.5 0.5", "0.500000 0.500000"},
      {"1 1", "1.000000 1.000000"},      {"0.5 0.325", "0.500000 0.339000"},
      {"0.75 0.75", "0.735000 0.735000"}};
  for (const auto& [place, reported] : cases)
    EXPECT_EQ(map(place), reported) << place;
  EXPECT_EQ(report("0.5 0.5"), "0.500122 0.500122") << "in whole counts";
  EXPECT_EQ(report("0.5 0.28"), "");
  EXPECT_EQ(report("0.9 0.37"), "");
  EXPECT_NE(report("0.9 0.38"), "");

  panel({"noise 0.01"});
  EXPECT_NE(report("0.2 0.8"), report("0.2 0.8"));
  request("touch 0.5 0.8");
  EXPECT_EQ(driver.IsPenUp(driver.OpenController(usbName)), 0);
  request("touch 0.5 0.325");
  EXPECT_NE(driver.IsPenUp(driver.OpenController(usbName)), 0) << "the finger slid onto the strip";

  panel({"offset-x new", "offset-y new", "gain-x new", "gain-y new", "skew new", "noise new",
         "bow new", "dead-strip new"});
  EXPECT_EQ(error(), asNew);
}

TEST_F(Requests, listTheFaultsByTheirNames) {
  EXPECT_THAT(request("faults"), testing::StartsWith("no-answer\nslow-answer\nshort-reply\n"));
}

TEST_F(Requests, resetMakesEverythingNewButKeepsHandles) {
  const auto handle = driver.OpenController(serialName);
  const std::string before = error(serialName);
  request(std::string("panel skew 0.3 ") + serialName);
  request(std::string("fault garbled-reply on ") + serialName);
  request("touch 0.5 0.5");
  driver.SetRotation(handle, 2);
  ask(handle, framed("SP001234"));
  request("reset");
  EXPECT_EQ(error(serialName), before);
  EXPECT_NE(driver.IsPenUp(handle), 0);
  EXPECT_EQ(driver.GetRotation(handle), 0);
  EXPECT_EQ(ask(handle, framed("GP00")), framed("00301"));
}

}  // namespace
}  // namespace touch::simulator
