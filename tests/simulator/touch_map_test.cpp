#include "simulator/touch_map.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "simulator/calibration_run.h"
#include "simulator/parameter_memory.h"

namespace touch::simulator {
namespace {

TEST(TouchMap, fitRestoresAnyAffineMap) {
  const TouchMap screenToRaw{0.9, 0.05, 0.02, -0.03, -0.8, 0.95};
  for (const int count : {3, 5, 9}) {
    std::vector<CalibrationPair> pairs;
    for (const Point target : calibrationTargets(count)) {
      pairs.push_back({screenToRaw(target), target});
    }
    const auto map = fitAffine(pairs);
    ASSERT_TRUE(map) << count;
    const Point back = (*map)(screenToRaw({0.2, 0.7}));
    EXPECT_NEAR(back.x, 0.2, 1e-9) << count;
    EXPECT_NEAR(back.y, 0.7, 1e-9) << count;
  }
}

TEST(TouchMap, fitRefusesReadingsWithoutArea) {
  const Point target{0.5, 0.5};
  const struct {
    std::string_view what;
    std::vector<Point> readings;
  } cases[] = {
      {"none", {}},
      {"two", {{0.1, 0.1}, {0.9, 0.9}}},
      {"one spot", {{0.5, 0.5}, {0.5, 0.5}, {0.5, 0.5}}},
      {"a line", {{0.1, 0.2}, {0.2, 0.4}, {0.4, 0.8}}},
      {"a line with noise", {{0.1, 0.1}, {0.5, 0.5005}, {0.9, 0.9}}},
  };
  for (const auto& [what, readings] : cases) {
    std::vector<CalibrationPair> pairs;
    pairs.reserve(readings.size());
    for (const Point reading : readings) {
      pairs.push_back({reading, target});
    }
    EXPECT_FALSE(fitAffine(pairs)) << what;
  }
  EXPECT_FALSE(fitCorners({{0.1, 0.9}, {0.125, 0.875}}, {{0.1, 0.1}, {0.875, 0.125}}));
}

TEST(CalibrationRun, takesEachTargetOnceAndOnlyWhenArmed) {
  CalibrationRun run;
  run.take({0.1, 0.1});
  EXPECT_FALSE(run.current());
  EXPECT_FALSE(run.arm(3, 3, 60));
  EXPECT_FALSE(run.arm(0, 4, 60));
  for (int point = 0; point < 3; ++point) {
    ASSERT_TRUE(run.arm(point, 3, 60));
    EXPECT_EQ(run.wanted(), 60);
    EXPECT_TRUE(run.pairs().empty()) << point;
    run.take({0.1 * point, 0.5});
    run.take({0.9, 0.9});
    EXPECT_EQ(run.current()->x, 0.1 * point);
  }
  EXPECT_EQ(run.pairs().size(), 3U);
  ASSERT_TRUE(run.arm(1, 3, 60));
  EXPECT_TRUE(run.pairs().empty()) << "a target that is asked again has no reading";
}

TEST(ParameterMemory, hasTwoAreasAndKeepsTheMapInWords) {
  constexpr FactoryWord words[] = {{0x20, 0x2580}, {0x80, 4}};
  ParameterMemory memory(words);
  const struct {
    int address;
    bool exists;
  } addresses[] = {{0x00, true}, {0x3F, true}, {0x40, false}, {0x7F, false},
                   {0x80, true}, {0xBF, true}, {0xC0, false}, {0xFF, false}};
  for (const auto& [address, exists] : addresses) {
    const auto where = static_cast<std::uint8_t>(address);
    EXPECT_EQ(memory.write(where, 0x1234), exists) << address;
    EXPECT_EQ(memory.read(where).has_value(), exists) << address;
  }
  EXPECT_EQ(memory.read(0x20), 0x2580);
  memory.restoreParameters();
  EXPECT_EQ(memory.read(0x80), 0x1234) << "the wiring stays";
  EXPECT_EQ(memory.read(0x3F), 0xFFFF);
  memory.restoreAll();
  EXPECT_EQ(memory.read(0x80), 4);

  ASSERT_TRUE(memory.storeTouchMap({1.25, -0.5, 0.25, 0, 0.75, -1}));
  EXPECT_EQ(memory.read(0x02), 0x5000);
  EXPECT_EQ(memory.read(0x03), 0xE000);
  EXPECT_EQ(memory.touchMap().yShift, -1);
  EXPECT_FALSE(memory.storeTouchMap({3, 0, 0, 0, 1, 0}));
  EXPECT_EQ(memory.touchMap().xFromX, 1.25);
}

}  // namespace
}  // namespace touch::simulator
