#include <clocale>
#include <string>

#include "tests/simulator/driver_bench.h"

namespace touch::simulator {
namespace {

TEST_F(DriverBench, requestsOutOfFormAreRefusedWithAReason) {
  const struct {
    const char* request;
    const char* reason;
  } cases[] = {
      {"", "unknown request \"\""},
      {"   ", "unknown request \"\""},
      {"tuch 0 0", "unknown request \"tuch\""},
      {"touch", "expected \"touch X Y\""},
      {"touch 0.5", "expected \"touch X Y\""},
      {"touch 0.5 0.5 0.5", "expected \"touch X Y\""},
      {"touch 0,5 0.5", "expected a fraction from 0 to 1, found \"0,5\""},
      {"touch 0.5 1.01", "expected a fraction from 0 to 1, found \"1.01\""},
      {"touch nan 0", "expected a fraction from 0 to 1, found \"nan\""},
      {"touch 0.5x 0", "expected a fraction from 0 to 1, found \"0.5x\""},
      {"lift now", "expected \"lift\""},
      {"error", "expected \"error NAME\""},
      {"error USB", "no controller is called \"USB\""},
      {"map 0 0", "expected \"map X Y NAME\""},
      {"fault sticky on USB DEVICE 2", "no fault is called \"sticky\"; see faults"},
      {"fault unplugged maybe USB DEVICE 2", "expected on or off, found \"maybe\""},
      {"fault unplugged on", "expected \"fault FAULT on|off NAME\""},
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
  request("clock real");
  EXPECT_EQ(driver.simulate("advance 10").text, "the clock is not manual");
}

TEST_F(DriverBench, panelIsWhatItWasToldToBe) {
  for (const char* change : {"offset-x 0.1", "gain-x 0.5", "skew 0.25", "offset-y 0", "gain-y 1"}) {
    request(std::string("panel ") + change + " USB DEVICE 2");
  }
  EXPECT_EQ(request("map 0 0 USB DEVICE 2"), "0.100000 0.000000");
  EXPECT_EQ(request("  map  1  0.5   USB DEVICE 2  "), "0.725000 0.500000");
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_EQ(request("map 0 1 USB DEVICE 2"), "0.350000 1.000000");
  std::setlocale(LC_NUMERIC, "C");
  request("panel skew 0 USB DEVICE 2");
  request("panel gain-x 1 USB DEVICE 2");
  request("panel offset-x 0 USB DEVICE 2");
  EXPECT_EQ(request("error USB DEVICE 2"), "0.000000 0.000000");
  request("panel offset-x 0 USB DEVICE 2");
  request("panel offset-y 0.2 USB DEVICE 2");
  // Where the converter's range ends, the error shrinks: a grid row is 0.125, the panel's height
  // 0.75 of its width.
  EXPECT_EQ(request("error USB DEVICE 2"), "0.127083 0.150000");
}

TEST_F(DriverBench, panelsBowDieAndBecomeNewAgain) {
  const std::string asNew = request("error USB DEVICE 2");
  for (const char* change : {"offset-x 0", "offset-y 0", "gain-x 1", "gain-y 1", "skew 0",
                             "noise 0", "bow 0.04", "dead-strip 0.1"}) {
    request(std::string("panel ") + change + " USB DEVICE 2");
  }
  const std::pair<const char*, const char*> cases[] = {
      {"0 0.5", "0.040000 0.500000"},    {"1 0.5", "0.960000 0.500000"},
      {"0.5 0", "0.500000 0.040000"},    {"0.5 0.5", "0.500000 0.500000"},
      {"1 1", "1.000000 1.000000"},      {"0.5 0.325", "0.500000 0.339000"},
      {"0.75 0.75", "0.735000 0.735000"}};
  for (const auto& [place, reported] : cases)
    EXPECT_EQ(request(std::string("map ") + place + " USB DEVICE 2"), reported) << place;
  EXPECT_EQ(request("report 0.5 0.5 USB DEVICE 2"), "0.500122 0.500122") << "in whole counts";
  EXPECT_EQ(request("report 0.5 0.28 USB DEVICE 2"), "");
  EXPECT_EQ(request("report 0.9 0.37 USB DEVICE 2"), "");
  EXPECT_NE(request("report 0.9 0.38 USB DEVICE 2"), "");

  request("panel noise 0.01 USB DEVICE 2");
  EXPECT_NE(request("report 0.2 0.8 USB DEVICE 2"), request("report 0.2 0.8 USB DEVICE 2"));
  request("touch 0.5 0.8");
  EXPECT_EQ(driver.IsPenUp(driver.OpenController(usbName)), 0);
  request("touch 0.5 0.325");
  EXPECT_NE(driver.IsPenUp(driver.OpenController(usbName)), 0) << "the finger slid onto the strip";

  for (const char* key :
       {"offset-x", "offset-y", "gain-x", "gain-y", "skew", "noise", "bow", "dead-strip"}) {
    request(std::string("panel ") + key + " new USB DEVICE 2");
  }
  EXPECT_EQ(request("error USB DEVICE 2"), asNew);
}

TEST_F(DriverBench, panelsComeFromTheFactoryVisiblyWrong) {
  for (const char* name : {serialName, usbName}) {
    EXPECT_GT(meanError(name), 0.025) << name;
    EXPECT_LT(meanError(name), 0.055) << name;
  }
}

TEST_F(DriverBench, resetMakesEverythingNewButKeepsHandles) {
  const auto handle = driver.OpenController(serialName);
  const std::string before = request(std::string("error ") + serialName);
  request(std::string("panel skew 0.3 ") + serialName);
  request(std::string("fault garbled-reply on ") + serialName);
  request("touch 0.5 0.5");
  driver.SetRotation(handle, 2);
  ask(handle, framed("SP001234"));
  request("reset");
  EXPECT_EQ(request(std::string("error ") + serialName), before);
  EXPECT_NE(driver.IsPenUp(handle), 0);
  EXPECT_EQ(driver.GetRotation(handle), 0);
  EXPECT_EQ(ask(handle, framed("GP00")), framed("00301"));
}

TEST_F(DriverBench, everyListedFaultCanBeSwitched) {
  std::istringstream names(request("faults"));
  int count = 0;
  for (std::string name; std::getline(names, name); ++count) {
    request("fault " + name + " on " + usbName);
    request("fault " + name + " off " + usbName);
  }
  EXPECT_EQ(count, 10);
}

}  // namespace
}  // namespace touch::simulator
