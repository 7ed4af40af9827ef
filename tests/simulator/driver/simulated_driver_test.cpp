#include "simulator/driver/simulated_driver.h"

#include <limits>
#include <thread>

#include "core/driver/nexapi.h"
#include "simulator/controller/requests.h"
#include "simulator/panel/calibration_run.h"
#include "tests/simulator/driver/driver_bench.h"

namespace touch::simulator {
namespace {

class Driving : public DriverBench {
 protected:
  /// Touches `places` for the targets of `count` from `point` on, and says how storing went.
  std::int32_t calibrate(std::int32_t handle, int count, std::span<const Point> places,
                         int point = 0) {
    for (const Point place : places) {
      driver.SetCalPoint(handle, point++, 60, count);
      click(place);
    }
    return driver.StoreCalibrationData(handle);
  }
};

TEST_F(Driving, listsTheControllersThatArePluggedIn) {
  const auto listed = [&] {
    std::vector<std::string> names;
    for (int number = 0; number <= driver.GetExistControllers() + 1; ++number) {
      std::array<char, 20> name{};
      if (driver.GetControllerName(number, name.data(), 20) != 0) names.emplace_back(name.data());
    }
    return names;
  };
  EXPECT_THAT(listed(), testing::ElementsAre(serialName, usbName, silentName));
  request("fault unplugged on " + serialName);
  EXPECT_THAT(listed(), testing::ElementsAre(usbName, silentName));
  EXPECT_EQ(open(serialName), 0);
  request("fault open-fails on " + usbName);
  EXPECT_EQ(open(usbName), 0);
  EXPECT_EQ(open("USB DEVICE 22"), 0);
}

TEST_F(Driving, namesAndAnswersAreCutToTheirBuffers) {
  const auto library = std::move(*NexapiDriver::bind(SIMULATOR_LIBRARY));
  const auto simulate = std::bit_cast<SimulateFunction>(library->extraExport("NexapiSimulate"));
  const std::string untouched(64, '#');
  const std::tuple<std::int32_t, std::string, std::string> cases[] = {
      {256, untouched, "unknown request \"nonsense\""},
      {6, "RS232", "unkno"},
      {1, "", ""},
      {0, untouched, untouched},
      {-1, untouched, untouched},
  };
  for (const auto& [size, shownName, shownAnswer] : cases) {
    std::string name = untouched;
    EXPECT_EQ(library->GetControllerName(1, name.data(), size), shownName != untouched) << size;
    EXPECT_STREQ(name.c_str(), shownName.c_str()) << size;
    std::string answer = untouched;
    EXPECT_EQ(simulate("nonsense", answer.data(), size), 0);
    EXPECT_STREQ(answer.c_str(), shownAnswer.c_str()) << size;
  }
  EXPECT_EQ(simulate("lift", nullptr, 0), 1);
  EXPECT_EQ(simulate(nullptr, nullptr, 100), 0);
}

TEST_F(Driving, hostileArgumentsDoNoHarm) {
  const auto handle = open(usbName);
  std::array<std::uint8_t, 4> bytes{0xAA, 0xAA, 0xAA, 0xAA};
  EXPECT_EQ(driver.OpenController(nullptr), 0);
  EXPECT_EQ(driver.GetControllerName(1, nullptr, 20), 0);
  EXPECT_EQ(driver.WriteBuffer(handle, nullptr, 4), 0);
  EXPECT_EQ(driver.ReadBuffer(handle, nullptr, 10), 0);
  EXPECT_EQ(driver.CalCurrentPointReady(handle, nullptr), 0);
  write(handle, framed("UT"));
  wait(100);
  for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min(), 256}) {
    driver.WriteBuffer(handle, bytes.data(), count);
    EXPECT_EQ(driver.ReadBuffer(handle, bytes.data(), count), 0) << count;
  }
  EXPECT_EQ(bytes[0], 0xAA);
  EXPECT_EQ(driver.ReadBuffer(handle, bytes.data(), 4), 4);
  const auto closed = open(usbName);
  EXPECT_EQ(driver.CloseController(closed), 1);
  EXPECT_GT(open(usbName), closed) << "handles are not used again";
  for (const std::int32_t wild :
       {closed, 0, 1, -1, 7777, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(ask(wild, framed("UT")), "");
    EXPECT_EQ(driver.GetRightClickTime(wild), 0);
    EXPECT_EQ(driver.SetRotation(wild, 1), 0);
    EXPECT_EQ(driver.CloseCOMPort(wild), 0);
    EXPECT_EQ(driver.StoreCalibrationData(wild), 0);
    EXPECT_EQ(driver.CloseController(wild), 0);
  }
  for (const auto& [point, count] : {std::pair{3, 3}, {-1, 3}, {255, 3}, {0, 4}, {0, 2}})
    EXPECT_EQ(driver.SetCalPoint(handle, point, 60, count), 0) << point << " of " << count;
}

TEST_F(Driving, settingsStayAndAreEachTheirOwn) {
  using D = SimulatedDriver;
  using Set = std::int32_t (D::*)(std::int32_t, std::int32_t);
  using Get = std::int32_t (D::*)(std::int32_t);
  const std::tuple<const char*, Set, Get, std::int32_t, std::optional<std::int32_t>> settings[] = {
      {"mode", &D::SetReportMode, &D::GetReportMode, 2, 4},
      {"rotation", &D::SetRotation, &D::GetRotation, 3, 4},
      {"up", &D::EnableUpSound, &D::GetUpSoundStatus, 1, {}},
      {"down", &D::EnableDownSound, &D::GetDownSoundStatus, 0, {}},
      {"double", &D::EnableDoubleClick, &D::GetDoubleClickEnabled, 0, {}},
      {"speed", &D::SetDoubleClickSpeed, &D::GetDoubleClickSpeed, 7, 0},
      {"area", &D::SetDoubleClickArea, &D::GetDoubleClickArea, 33, {}},
      {"right", &D::EnableRightClick, &D::GetRightClickEnabled, 0, {}},
      {"time", &D::SetRightClickTime, &D::GetRightClickTime, 1200, 299},
  };
  const auto usb = open(usbName);
  const auto serial = open(serialName);
  for (const auto& [name, set, get, value, refusedValue] : settings) {
    EXPECT_NE((driver.*get)(usb), value) << name << " would not show that it was set";
    EXPECT_EQ((driver.*set)(usb, value), 1) << name;
    EXPECT_EQ(refusedValue ? (driver.*set)(usb, *refusedValue) : 0, 0) << name;
  }
  driver.CloseController(usb);
  const auto again = open(usbName);
  for (const auto& [name, set, get, value, refusedValue] : settings) {
    EXPECT_EQ((driver.*get)(again), value) << name;
    EXPECT_NE((driver.*get)(serial), value) << name << " belongs to one controller";
  }
  for (const auto& [mode, reports] : {std::pair{"MP", 1}, {"MI", 0}, {"MS", 1}}) {
    ask(again, framed(mode));
    EXPECT_EQ(driver.GetReportStatus(again), reports) << mode;
  }
  driver.DisableTouchRePort(again);
  EXPECT_EQ(driver.GetReportStatus(again), 0);

  request("fault error-returns on " + usbName);
  EXPECT_LE(open(usbName), 1);
  EXPECT_EQ(driver.SetRotation(again, 1), 0);
  EXPECT_EQ(driver.GetRotation(again), -1);
}

TEST_F(Driving, calibrationLeavesOnlyNoise) {
  for (const std::string& name : {serialName, usbName}) {
    for (const int count : {3, 5, 9}) {
      SCOPED_TRACE(name + ' ' + std::to_string(count));
      request("reset");
      EXPECT_GT(meanError(name), 0.025) << "a new panel is visibly wrong";
      EXPECT_NE(calibrate(open(name), count, expectedTargets(count)), 0);
      EXPECT_LT(meanError(name), 0.0005);
    }
  }
}

TEST_F(Driving, calibrationTakesATouchThatBeganAfterItsTarget) {
  const auto handle = open(serialName);
  std::array<std::int32_t, 2> raw{-1, -1};
  request("touch 0.2 0.2");
  driver.SetCalPoint(handle, 0, 60, 3);
  request("touch 0.3 0.3");
  EXPECT_EQ(driver.CalCurrentPointReady(handle, raw.data()), 0) << "it was down before";
  EXPECT_NE(driver.IsPenUp(open(silentName)), 0) << "it feels nothing";
  request("lift");
  click({0.5, 0.5});
  click({0.9, 0.9});
  EXPECT_NE(driver.CalCurrentPointReady(handle, raw.data()), 0) << "the finger is long gone";
  EXPECT_NEAR(raw[0], 4095 * (0.065 + 0.89 * 0.5 + 0.022 * 0.5), 3);
  EXPECT_NEAR(raw[1], 4095 * (0.055 + 0.87 * 0.5), 3);
  driver.SetCalPoint(handle, 0, 60, 3);
  EXPECT_EQ(driver.CalCurrentPointReady(handle, raw.data()), 0) << "asked again";
}

TEST_F(Driving, unfinishedCalibrationChangesNothing) {
  const auto handle = open(serialName);
  const auto other = open(serialName);
  const double before = meanError(serialName);
  EXPECT_EQ(calibrate(handle, 3, expectedTargets(3).first(2)), 0);
  EXPECT_EQ(meanError(serialName), before);
  driver.CloseController(other);
  EXPECT_NE(calibrate(handle, 3, expectedTargets(3).last(1), 2), 0)
      << "another handle's closing drops nothing";

  EXPECT_EQ(calibrate(handle, 5, expectedTargets(5).first(4)), 0);
  driver.CloseController(handle);
  const auto later = open(serialName);
  EXPECT_EQ(calibrate(later, 5, expectedTargets(5).last(1), 4), 0)
      << "closing dropped the taken points";
  EXPECT_EQ(calibrate(later, 3, std::vector<Point>(3, {0.1, 0.1})), 0) << "on one spot";
  const Point onOneLine[] = {{0.1, 0.1}, {0.5, 0.5}, {0.9, 0.9}};
  EXPECT_EQ(calibrate(later, 3, onOneLine), 0);
  request("fault store-fails on " + serialName);
  EXPECT_EQ(calibrate(later, 3, expectedTargets(3)), 0);
}

TEST_F(Driving, threadsMayCallAtOnce) {
  request("clock real");
  const auto work = [this](int own) {
    for (int turn = 0; turn < 50; ++turn) {
      const auto handle = open(serialName);
      turn % 2 == own ? driver.CloseCOMPort(handle) : driver.ReopenCOMPort(handle);
      driver.answer("touch 0.5 0.5");
      driver.ReadLength(handle);
      driver.answer(turn % 7 == 0 ? "reset" : "lift");
      driver.CloseController(handle);
    }
  };
  {
    const std::jthread threads[] = {std::jthread(work, 0), std::jthread(work, 1),
                                    std::jthread(work, 0), std::jthread(work, 1)};
  }
  driver.ReopenCOMPort(open(serialName));
  EXPECT_EQ(request("port " + serialName), "");
}

}  // namespace
}  // namespace touch::simulator
