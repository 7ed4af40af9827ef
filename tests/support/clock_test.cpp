#include "support/system_clock.h"
#include "tests/doubles/test.h"

namespace touch::test {
namespace {

/// Time that passes only where the test says so, or where something is waited for.
class HeldClock final : public QueuedClock {
 public:
  TimePoint now() const override { return time; }
  TimePoint time{};

 private:
  void sleepUntil(TimePoint until) override { time = std::max(time, until); }
};

TEST(QueuedClock, RunsWhatIsDueInItsOrderAndMakesUpForNoTickThatWasMissed) {
  HeldClock clock;
  std::string ticks;
  const auto slow = clock.makeTimer([&ticks] { ticks += 's'; });
  const auto fast = clock.makeTimer([&ticks] { ticks += 'f'; });
  slow->start(15ms);
  fast->start(10ms);
  clock.yield(1);
  EXPECT_EQ(ticks, "") << "nothing is due";
  clock.delay(31ms, nullptr);
  EXPECT_EQ(ticks, "fsfsf");
  clock.time += 100ms;
  clock.yield(1);
  EXPECT_EQ(ticks, "fsfsff") << "one pass, one tick";
  clock.delay(5ms, nullptr);
  EXPECT_EQ(ticks, "fsfsffs") << "each has missed several";
  slow->stop();
  clock.yield(3001);
  EXPECT_EQ(ticks, "fsfsffsf") << "a rest of ten milliseconds";
}

}  // namespace
}  // namespace touch::test
