#include "console/parameters/kept_calibration.h"

#include <random>

#include "calibration/calibration.h"
#include "console/parameters/parameter_block.h"
#include "core/driver/simulation.h"
#include "core/exchange/exchange.h"
#include "support/text/hex.h"
#include "tests/calibration/recording_check_screen.h"
#include "tests/calibration/recording_screen.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/drivers.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

constexpr TwipsSize size{12000, 9000};

/// A controller that holds other words after a calibration than it has worked out.
class GarbageDriver final : public DriverBetween {
 public:
  explicit GarbageDriver(Driver& inner) : DriverBetween(inner) {}
  std::function<void()> onStored;

 private:
  std::int32_t pass(std::string_view operation, const Call& call) override {
    const std::int32_t result = call();
    if (operation == "StoreCalibrationData" && onStored) onStored();
    return result;
  }
};

struct PowerCut {};

/// The computer goes down at a call: that is still carried out, or no longer.
class MortalDriver final : public DriverBetween {
 public:
  explicit MortalDriver(Driver& inner) : DriverBetween(inner) {}
  int callsLeft = -1;  ///< without an end
  bool lastOneCounts = false;

 private:
  std::int32_t pass(std::string_view, const Call& call) override {
    if (callsLeft < 0) return call();
    if (callsLeft > 0 && --callsLeft > 0) return call();
    if (std::exchange(lastOneCounts, false)) call();
    throw PowerCut{};
  }
};

/// A simulated controller, whose time is the tests', and a finger that touches what is shown.
class KeptCalibrations : public testing::Test {
 protected:
  KeptCalibrations() {
    simulation.request("clock manual");
    simulation.request("reset");
    clock.onAdvance = [this](std::chrono::milliseconds step) {
      simulation.request("advance " + std::to_string(step.count()));
    };
    session.controllerName = "USB DEVICE 2";
  }

  Access access(Driver& driver) { return {session, driver, clock}; }
  ParameterBlock words() {
    const auto block = readBlock(access(*simulator));
    EXPECT_TRUE(block) << whyNot(block);
    return block.value_or(ParameterBlock{});
  }
  void write(const ParameterBlock& block) {
    for (const WordValue& word : wordsOf(block))
      EXPECT_TRUE(writeWord(access(*simulator), word));
  }
  ParameterBlock anyWords() {
    ParameterBlock block;
    for (ParameterWord& word : block)
      word = {static_cast<std::uint8_t>(random()), static_cast<std::uint8_t>(random())};
    return block;
  }
  double fraction() { return std::uniform_real_distribution<double>(0, 1)(random); }

  using Place = Simulation::Place;
  /// Far from `place`, and at no target: the next one would be taken for the same touch.
  Place missed(Place place, int points) {
    const auto targets = calibrationTargets(points, size);
    for (;;) {
      const Place other{fraction(), fraction()};
      const bool atTarget = std::ranges::any_of(targets, [&](TwipsPoint target) {
        return std::hypot(other.x - static_cast<double>(target.x / size.width),
                          other.y - static_cast<double>(target.y / size.height)) < 0.1;
      });
      if (!atTarget && std::hypot(other.x - place.x, other.y - place.y) >= 0.4) return other;
    }
  }

  /// `finger` says what is touched for target `index`.
  void calibrate(Driver& driver, int points,
                 const std::function<Place(std::size_t index, Place target)>& finger) {
    session.calibrationPoints = points;
    RecordingScreen shown;
    Calibration calibration(access(driver), prompt, shown, size);
    const auto targets = calibrationTargets(points, size);
    bool down = false;
    const auto hand = clock.makeTimer([&] {
      const TwipsPoint* const target = calibration.awaitedTarget();
      if (target != nullptr && !down) {
        const auto index = std::ranges::find(targets, *target) - targets.begin();
        const Place place =
            finger(static_cast<std::size_t>(index), {static_cast<double>(target->x / size.width),
                                                     static_cast<double>(target->y / size.height)});
        simulation.touch(place.x, place.y);
      } else if (target == nullptr && down) {
        simulation.lift();
      }
      down = target != nullptr;
    });
    hand->start(150ms);
    calibration.activate();
    clock.delay(10min, [&] { return !shown.endings.empty(); });
    ASSERT_EQ(shown.endings, std::vector{CalibrationOutcome::stored});
  }

  /// A finger that touches each cross in its centre, and no button.
  CheckResult check(WayBack& wayBack) {
    RecordingCheckScreen shown;
    Check check(clock, shown, size, usualCheckLimit, wayBack);
    const auto hand = clock.makeTimer([&] {
      const auto cross = check.awaited();
      if (!cross) return;
      const auto landed =
          simulation.report(static_cast<double>(cross->x / size.width),
                            static_cast<double>(cross->y / size.height), session.controllerName);
      check.touch({static_cast<float>(landed->x) * size.width,
                   static_cast<float>(landed->y) * size.height});
    });
    hand->start(1s);
    check.begin();
    clock.delay(10min, [&] { return !shown.results.empty(); });
    return shown.results.at(0);
  }
  bool isNoted() const {
    return fs::exists(folder.path() / "backup" / "unchecked-USB_DEVICE_2.txt");
  }

  std::mt19937 random{4095};
  Lines journal;
  VirtualClock clock{journal};
  ScriptedPrompt prompt{journal};
  Session session;
  std::unique_ptr<NexapiDriver> simulator = std::move(*NexapiDriver::bind(SIMULATOR_LIBRARY));
  Simulation simulation{*simulator};
  TemporaryFolder folder;
  const Backup backup{folder.path(), [] { return Backup::TimePoint{}; }};
};

TEST_F(KeptCalibrations, AreInForceAgainAfterEverySpoiltOne) {
  constexpr int spoilings = 500;
  GarbageDriver driver(*simulator);
  calibrate(driver, 9, [](std::size_t, Place target) { return target; });
  const ParameterBlock good = words();
  {
    KeptCalibration kept(access(driver), backup);
    EXPECT_EQ(check(kept).outcome, CheckOutcome::kept);
    EXPECT_FALSE(isNoted());
  }
  const std::function<void(int)> kinds[] = {
      [&](int points) {  // targets mixed up
        auto targets = calibrationTargets(points, size);
        const auto inOrder = targets;
        while (targets == inOrder)
          std::ranges::shuffle(targets, random);
        calibrate(driver, points, [&](std::size_t index, Place) {
          return Place{static_cast<double>(targets[index].x / size.width),
                       static_cast<double>(targets[index].y / size.height)};
        });
      },
      [&](int points) {  // a finger that missed; one of nine can leave the rest good enough
        const int few = std::min(points, 5);
        const auto index = random() % static_cast<std::size_t>(few);
        calibrate(driver, few, [&](std::size_t each, Place target) {
          return each == index ? missed(target, few) : target;
        });
      },
      [&](int points) {  // a controller that stores garbage
        driver.onStored = [&] {
          Connection connection(access(*simulator));
          connection.write(commandFrame("R"));  // what is locked would take no garbage
          for (const auto& [address, word] : wordsOf(anyWords()))
            connection.write(
                parameterWriteFrame(hexByte(address), hexByte(word.high), hexByte(word.low)));
        };
        calibrate(driver, points, [](std::size_t, Place target) { return target; });
        driver.onStored = nullptr;
      },
  };
  std::map<std::string, int> reasons;
  for (int spoiling = 0; spoiling < spoilings; ++spoiling) {
    SCOPED_TRACE(spoiling);
    // As a program has left it that ended before.
    if (random() % 2 == 0) exchange(access(*simulator), commandFrame("PL"));
    KeptCalibration kept(access(driver), backup);
    EXPECT_TRUE(isNoted());
    constexpr std::array counts = {3, 5, 9};
    kinds[spoiling % 3](counts[random() % counts.size()]);
    // The controller refuses a map whose factors are too large for its words.
    const bool isSpoilt = words() != good;
    const CheckResult result = check(kept);
    EXPECT_EQ(result.outcome, isSpoilt ? CheckOutcome::putBack : CheckOutcome::kept);
    if (isSpoilt) ++reasons[result.notice.text];
    EXPECT_EQ(words(), good);
    EXPECT_FALSE(isNoted());
    if (HasFailure()) return;
    journal.clear();
  }
  EXPECT_THAT(reasons, testing::SizeIs(2)) << "by touches nowhere near, and by waiting";
}

TEST_F(KeptCalibrations, SurviveACutAtEachCall) {
  const ParameterBlock before = anyWords();
  const ParameterBlock after = anyWords();
  std::set<std::string> said;
  for (const bool lastOneCounts : {false, true}) {
    bool isCut = true;
    for (int calls = 1; isCut; ++calls) {
      SCOPED_TRACE(testing::Message() << "call " << calls << ", done " << lastOneCounts);
      write(before);
      {
        MortalDriver driver(*simulator);
        KeptCalibration kept(access(driver), backup);
        write(after);
        driver.callsLeft = calls;
        driver.lastOneCounts = lastOneCounts;
        try {
          EXPECT_EQ(kept.putBack().text, "The calibration from before is in force.");
          isCut = false;
        } catch (const PowerCut&) {
          EXPECT_TRUE(isNoted());
          clock.delay(1s);  // nobody hears what the controller still says
        }
      }
      const ParameterBlock now = words();
      const std::string whole = now == before  ? "The calibration from before is in force."
                                : now == after ? "The new calibration is in force."
                                               : "The controller holds words of both";
      said.insert(whole);
      prompt.answerYes = true;
      const auto notice = settleUnchecked(access(*simulator), prompt, backup);
      EXPECT_EQ(notice.has_value(), isCut);
      if (isCut && now != before) {
        EXPECT_THAT(journal, Contains(HasSubstr(whole)));
      } else if (isCut) {
        EXPECT_THAT(notice->text, HasSubstr(whole));
      }
      EXPECT_EQ(words(), before);
      EXPECT_FALSE(settleUnchecked(access(*simulator), prompt, backup));
      if (HasFailure()) return;
      journal.clear();
    }
  }
  EXPECT_EQ(said.size(), 3u) << "each state was met";
}

}  // namespace
}  // namespace touch::test
