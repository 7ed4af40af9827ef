#include "ui/event_loop_clock.h"

#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QTimer>

#include "tests/doubles/test.h"

namespace touch::test {
namespace {

/// Real time, of which nothing is asserted: a wait that never ends is ended by the alarm.
class EventLoopWaits : public testing::Test {
 protected:
  EventLoopWaits() { alarm(60); }
  ~EventLoopWaits() override { alarm(0); }

  EventLoopClock clock;
  Lines journal;
  bool done = false;
  const std::function<bool()> isDone = [this] { return done; };
};

TEST_F(EventLoopWaits, EndFromTheInnermostOutwardsAndServeTheWindowsMeanwhile) {
  QTimer::singleShot(0, qApp, [this] {
    clock.delay(30ms, nullptr);
    journal.emplace_back("inner, longer than the outer one");
  });
  QTimer::singleShot(0, qApp, [this] { journal.emplace_back("an event"); });
  clock.delay(1ms, nullptr);
  journal.emplace_back("outer");
  EXPECT_EQ(journal, (Lines{"an event", "inner, longer than the outer one", "outer"}));
}

TEST_F(EventLoopWaits, EndEarlyWhenTheyAreToldToAndOnlyThen) {
  int asked = 0;
  clock.delay(1ms, [&asked] { return ++asked < 0; });
  EXPECT_GT(asked, 0) << "it came to its end all the same";
  QTimer::singleShot(0, qApp, [this] {
    QTimer::singleShot(0, qApp, [this] { done = true; });
    clock.delay(1h, isDone);
    journal.emplace_back("inner");
  });
  clock.delay(1h, isDone);
  EXPECT_EQ(journal, Lines{"inner"}) << "what ends both ends both";
  clock.delay(1h, isDone);  // it waits for no event
}

TEST_F(EventLoopWaits, OfNoTimeRunWhatIsDueAndManyPassesAreARest) {
  int rests = 0;
  QObject here;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                   &here, [&rests] { ++rests; });
  QTimer::singleShot(0, qApp, [this] { done = true; });
  clock.yield(0);
  EXPECT_FALSE(done);
  clock.yield(2);
  EXPECT_TRUE(done);
  EXPECT_EQ(rests, 0);
  clock.yield(3001);
  EXPECT_GT(rests, 0) << "spinning would only heat the processor";
}

TEST_F(EventLoopWaits, LetTimersTickThatAreStartedOverAndOverStoppedOrGone) {
  const auto stopped = clock.makeTimer([this] { journal.emplace_back("stopped"); });
  stopped->start(1ms);
  stopped->stop();
  std::unique_ptr<Timer> gone = clock.makeTimer([&gone, this] {
    gone.reset();
    journal.emplace_back("gone");
  });
  gone->start(1ms);
  int ticks = 0;
  const auto started = clock.makeTimer([&ticks, this] { done = ++ticks >= 2; });
  const auto starter = clock.makeTimer([&started] { started->start(20ms); });
  starter->start(1ms);
  clock.delay(1h, isDone);
  EXPECT_EQ(journal, Lines{"gone"});
  starter->stop();
  done = false;
  started->start(1ms);  // another interval begins anew
  clock.delay(1h, isDone);
}

}  // namespace
}  // namespace touch::test
