#include "simulator/line_format.h"

#include <cmath>
#include <string>

#include "simulator/controllers.h"
#include "simulator/simulated_controller.h"
#include "simulator/strokes.h"
#include "tests/simulator/driver_bench.h"

namespace touch::simulator {
namespace {

using namespace std::chrono_literals;

constexpr auto eight = LineFormat::eightN1;
constexpr auto seven = LineFormat::sevenN2;

TEST(LineFormats, MakeGarbageOrNothingOfEachOther) {
  const struct {
    std::uint8_t byte;
    LineFormat sent;
    LineFormat listener;
    std::optional<std::uint8_t> heard;
  } cases[] = {
      {0xD8, eight, eight, 0xD8}, {0x0D, eight, eight, 0x0D},         {0xD8, seven, seven, 0x58},
      {0x0D, seven, seven, 0x0D}, {0x0D, seven, eight, 0x8D},         {0xD8, seven, eight, 0xD8},
      {0xD8, eight, seven, 0x58}, {0x0D, eight, seven, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(heard(c.byte, c.sent, c.listener), c.heard) << int{c.byte};
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
  controller.speak(seven);
  controller.say(std::array<std::uint8_t, 3>{0x01, 0xD8, 0x30}, now);
  EXPECT_EQ(later(), "\x81\xD8\xB0");
}

TEST_F(ControllerOnALine, SpoilsSomeReportsWhenNoisy) {
  controller.faults().set(Fault::noisyReports, true);
  controller.panel().noise = 0;
  std::string stream;
  controller.touch({0.5, 0.5}, now);
  for (int i = 0; i < 10; ++i)
    stream += later();
  const std::string noise = "\x3C\xF3";
  EXPECT_NE(stream.find(noise), std::string::npos);
  EXPECT_NE(stream.size() % 5, 0U);
  controller.lift(now);
  controller.faults().set(Fault::noAnswer, true);
  later();
  controller.say(std::array<std::uint8_t, 1>{0x41}, now);
  EXPECT_EQ(later(), "");
}

TEST(Strokes, StayOnThePanelAndCirclesAreRound) {
  EXPECT_EQ(lines(100).size(), 10U);
  EXPECT_EQ(lineStroke({0, 0.5}, {1, 0.5}, 4),
            (Stroke{{0, 0.5}, {0.25, 0.5}, {0.5, 0.5}, {0.75, 0.5}, {1, 0.5}}));
  for (const Stroke& stroke : circles(90)) {
    ASSERT_EQ(stroke.size(), 91U);
    const double radius = stroke.front().x - 0.5;
    for (const Point place : stroke) {
      EXPECT_NEAR(std::hypot(place.x - 0.5, (place.y - 0.5) * panelHeight), radius, 1e-9);
      EXPECT_GE(place.y, 0);
      EXPECT_LE(place.y, 1);
    }
  }
}

}  // namespace
}  // namespace touch::simulator
