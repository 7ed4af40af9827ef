#include "simulator/simulated_driver.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <thread>
#include <vector>

#include "tests/simulator/driver_bench.h"

namespace touch::simulator {
namespace {

using Raw = std::array<std::int32_t, 2>;

class Driving : public DriverBench {
 protected:
  /// Touches the first `taken` of `count` targets and says how storing went.
  std::int32_t calibrate(std::int32_t handle, int count, int taken) {
    int point = 0;
    for (const Point target : calibrationTargets(count).first(static_cast<std::size_t>(taken))) {
      driver.SetCalPoint(handle, point++, 60, count);
      click(target);
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
  EXPECT_EQ(listed(), (std::vector<std::string>{serialName, usbName, silentName}));
  request(std::string("fault unplugged on ") + serialName);
  EXPECT_EQ(driver.GetExistControllers(), 2);
  EXPECT_EQ(listed(), (std::vector<std::string>{usbName, silentName}));
  EXPECT_EQ(driver.OpenController(serialName), 0);
}

TEST_F(Driving, namesAreCutToTheirBuffer) {
  const std::string untouched(31, '#');
  const std::pair<std::int32_t, std::string> cases[] = {
      {20, serialName}, {6, "RS232"}, {1, ""}, {0, untouched}, {-1, untouched}, {256, untouched}};
  for (const auto& [size, expected] : cases) {
    std::array<char, 32> name{};
    std::ranges::copy(untouched, name.begin());
    EXPECT_EQ(driver.GetControllerName(1, name.data(), size), expected == untouched ? 0 : 1)
        << size;
    EXPECT_EQ(std::string(name.data()), expected) << size;
  }
}

TEST_F(Driving, handlesAreUniqueAndDieWhenClosed) {
  std::int32_t last = 1;
  for (int i = 0; i < 10; ++i) {
    const auto handle = driver.OpenController(usbName);
    EXPECT_GT(handle, last);
    last = handle;
    driver.CloseController(handle);
    EXPECT_EQ(driver.CloseController(handle), 0);
    EXPECT_EQ(driver.GetRightClickTime(handle), 0);
    EXPECT_EQ(ask(handle, framed("UT")), "");
  }
  EXPECT_EQ(driver.OpenController("USB DEVICE 22"), 0);
  EXPECT_EQ(driver.OpenController(""), 0);
}

TEST_F(Driving, hostileArgumentsDoNoHarm) {
  const auto handle = driver.OpenController(usbName);
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
  for (const std::int32_t wild : {0, 1, -1, 7, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(driver.SetRotation(wild, 1), 0);
    EXPECT_EQ(driver.CloseCOMPort(wild), 0);
    EXPECT_EQ(driver.StoreCalibrationData(wild), 0);
    EXPECT_EQ(driver.CloseController(wild), 0);
  }
  for (const auto& [point, count] : {std::pair{3, 3}, {-1, 3}, {255, 3}, {0, 4}, {0, 2}}) {
    EXPECT_EQ(driver.SetCalPoint(handle, point, 60, count), 0) << point << " of " << count;
  }
}

TEST_F(Driving, settingsStayAndAreEachTheirOwn) {
  using D = SimulatedDriver;
  const struct {
    const char* name;
    std::int32_t (D::*set)(std::int32_t, std::int32_t);
    std::int32_t (D::*get)(std::int32_t);
    std::int32_t value;
    std::optional<std::int32_t> refusedValue;
  } settings[] = {
      {"mode", &D::SetReportMode, &D::GetReportMode, 2, 4},
      {"rotation", &D::SetRotation, &D::GetRotation, 3, 4},
      {"up", &D::EnableUpSound, &D::GetUpSoundStatus, 1, {}},
      {"down", &D::EnableDownSound, &D::GetDownSoundStatus, 0, {}},
      {"double", &D::EnableDoubleClick, &D::GetDoubleClickEnabled, 0, {}},
      {"speed", &D::SetDoubleClickSpeed, &D::GetDoubleClickSpeed, 7, 0},
      {"area", &D::SetDoubleClickArea, &D::GetDoubleClickArea, 33, {}},
      {"right", &D::EnableRightClick, &D::GetRightClickEnabled, 0, {}},
      {"time", &D::SetRightClickTime, &D::GetRightClickTime, 300, 299},
  };
  const auto usb = driver.OpenController(usbName);
  const auto serial = driver.OpenController(serialName);
  for (const auto& [name, set, get, value, refusedValue] : settings) {
    EXPECT_NE((driver.*get)(usb), value) << name << " would not show that it was set";
    EXPECT_EQ((driver.*set)(usb, value), 1) << name;
  }
  driver.CloseController(usb);
  const auto again = driver.OpenController(usbName);
  for (const auto& [name, set, get, value, refusedValue] : settings) {
    EXPECT_EQ((driver.*get)(again), value) << name;
    EXPECT_NE((driver.*get)(serial), value) << name << " belongs to one controller";
    if (!refusedValue) continue;
    EXPECT_EQ((driver.*set)(again, *refusedValue), 0) << name;
    EXPECT_EQ((driver.*get)(again), value) << name;
  }
}

TEST_F(Driving, reportStatusFollowsTheModeCommands) {
  const auto handle = driver.OpenController(usbName);
  EXPECT_EQ(driver.GetReportStatus(handle), 1);
  ask(handle, framed("MI"));
  EXPECT_EQ(driver.GetReportStatus(handle), 0);
  ask(handle, framed("MS"));
  EXPECT_EQ(driver.GetReportStatus(handle), 1);
  driver.DisableTouchRePort(handle);
  EXPECT_EQ(driver.GetReportStatus(handle), 0);
}

TEST_F(Driving, calibrationLeavesOnlyNoise) {
  for (const char* name : {serialName, usbName}) {
    for (const int count : {3, 5, 9}) {
      request("reset");
      EXPECT_GT(meanError(name), 0.025) << name << ": a new panel is visibly wrong";
      const auto handle = driver.OpenController(name);
      EXPECT_NE(calibrate(handle, count, count), 0) << name << ' ' << count;
      EXPECT_LT(meanError(name), 0.0005) << name << ' ' << count;
      driver.CloseController(handle);
    }
  }
}

TEST_F(Driving, calibrationTakesATouchThatBeganAfterItsTarget) {
  const auto handle = driver.OpenController(serialName);
  Raw raw{-1, -1};
  request("touch 0.2 0.2");
  driver.SetCalPoint(handle, 0, 60, 3);
  request("touch 0.3 0.3");
  EXPECT_EQ(driver.CalCurrentPointReady(handle, raw.data()), 0) << "it was down before";
  EXPECT_EQ(driver.IsPenUp(handle), 0);
  request("lift");
  EXPECT_NE(driver.IsPenUp(handle), 0);
  click({0.5, 0.5});
  click({0.9, 0.9});
  EXPECT_NE(driver.CalCurrentPointReady(handle, raw.data()), 0) << "the finger is long gone";
  EXPECT_NEAR(raw[0], 4095 * (0.065 + 0.89 * 0.5 + 0.022 * 0.5), 3);
  EXPECT_NEAR(raw[1], 4095 * (0.055 + 0.87 * 0.5), 3);
  driver.SetCalPoint(handle, 0, 60, 3);
  EXPECT_EQ(driver.CalCurrentPointReady(handle, raw.data()), 0) << "asked again";
}

TEST_F(Driving, unfinishedCalibrationChangesNothing) {
  const auto handle = driver.OpenController(serialName);
  const auto other = driver.OpenController(serialName);
  const double before = meanError(serialName);
  EXPECT_EQ(calibrate(handle, 3, 2), 0);
  EXPECT_EQ(meanError(serialName), before);

  driver.CloseController(other);
  driver.SetCalPoint(handle, 2, 60, 3);
  click({1.0 / 32, 31.0 / 32});
  EXPECT_NE(driver.StoreCalibrationData(handle), 0) << "another handle's closing drops nothing";

  EXPECT_EQ(calibrate(handle, 5, 4), 0);
  driver.CloseController(handle);
  const auto later = driver.OpenController(serialName);
  driver.SetCalPoint(later, 4, 60, 5);
  click({31.0 / 32, 31.0 / 32});
  EXPECT_EQ(driver.StoreCalibrationData(later), 0) << "closing dropped the taken points";

  for (const double step : {0.0, 0.4}) {
    for (int point = 0; point < 3; ++point) {
      driver.SetCalPoint(later, point, 60, 3);
      click({0.1 + point * step, 0.1 + point * step});
    }
    EXPECT_EQ(driver.StoreCalibrationData(later), 0) << "on one spot, and on one line";
  }
  request(std::string("fault store-fails on ") + serialName);
  EXPECT_EQ(calibrate(later, 3, 3), 0);
}

TEST_F(Driving, errorReturnsAreNeverMistakenForResults) {
  const auto handle = driver.OpenController(usbName);
  request(std::string("fault error-returns on ") + usbName);
  Raw raw{};
  EXPECT_LE(driver.OpenController(usbName), 1);
  EXPECT_EQ(driver.SetDoubleClickSpeed(handle, 3), 0);
  EXPECT_EQ(driver.GetReportMode(handle), -1);
  EXPECT_EQ(driver.ReadLength(handle), -1);
  EXPECT_EQ(driver.CalCurrentPointReady(handle, raw.data()), 0);
  EXPECT_EQ(driver.StoreCalibrationData(handle), 0);
  request(std::string("fault open-fails on ") + serialName);
  EXPECT_EQ(driver.OpenController(serialName), 0);
}

TEST_F(Driving, monitorIsSetASecondAfterTheAsking) {
  driver.AskToSetMultiMonitor(driver.OpenController(usbName), 1);
  wait(999);
  EXPECT_EQ(driver.QueryMultiMonitorSetOK(), 0);
  wait(1);
  EXPECT_EQ(driver.QueryMultiMonitorSetOK(), 1);
}

TEST_F(Driving, threadsMayCallAtOnce) {
  request("clock real");
  {
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([this, i] {
        for (int turn = 0; turn < 50; ++turn) {
          const auto handle = driver.OpenController(serialName);
          turn % 2 == i % 2 ? driver.CloseCOMPort(handle) : driver.ReopenCOMPort(handle);
          driver.simulate("touch 0.5 0.5");
          driver.ReadLength(handle);
          driver.simulate(turn % 7 == 0 ? "reset" : "lift");
          driver.CloseController(handle);
        }
      });
    }
  }
  const auto handle = driver.OpenController(serialName);
  driver.ReopenCOMPort(handle);
  EXPECT_EQ(request(std::string("port ") + serialName), "");
}

}  // namespace
}  // namespace touch::simulator
