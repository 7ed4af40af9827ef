#include "ui/driver_notice.h"

#include "tests/ui/window_desk.h"
#include "ui/event_loop_clock.h"

namespace touch::test {
namespace {

using namespace std::chrono_literals;
using Next = DriverPatience::Next;

class DriverNotices : public WindowDesk {
 protected:
  Next waits(std::chrono::milliseconds waited) {
    return notice.stillWaiting({"nexapi.dll", "GetRotation", waited});
  }
  static QMessageBox* box(const char* name) { return qobject_cast<QMessageBox*>(opened(name)); }
  /// A button that is pressed by its key is seen pressed for a moment before it acts.
  static bool isGone(const char* name) {
    return QTest::qWaitFor([name] { return box(name) == nullptr; });
  }

  EventLoopClock realClock;
  DriverNotice notice{realClock};
};

TEST_F(DriverNotices, OfferToWaitForAHangingDriverOrToRestartIt) {
  EXPECT_EQ(waits(2999ms), Next::wait);
  EXPECT_EQ(box("driverHangs"), nullptr);
  EXPECT_EQ(waits(3s), Next::wait);
  ASSERT_NE(box("driverHangs"), nullptr);
  EXPECT_EQ(box("driverHangs")->text(),
            "The touch driver nexapi.dll has not returned from GetRotation for 3 seconds.");
  find<QPushButton>(*box("driverHangs"), "cmdWait")->click();
  EXPECT_EQ(waits(12s), Next::wait);
  EXPECT_EQ(box("driverHangs"), nullptr) << "who waits is not asked again at once";
  EXPECT_EQ(waits(13s), Next::wait);
  ASSERT_NE(box("driverHangs"), nullptr);
  find<QPushButton>(*box("driverHangs"), "cmdRestartDriver")->click();
  EXPECT_EQ(waits(13s), Next::giveUp);
  notice.lost("the driver was ended");
  EXPECT_EQ(box("driverLost"), nullptr) << "who has restarted it knows";
  notice.waitEnded();
  EXPECT_EQ(waits(0s), Next::wait);
}

TEST_F(DriverNotices, GoWhenTheDriverReturns) {
  waits(3s);
  ASSERT_NE(box("driverHangs"), nullptr);
  notice.waitEnded();
  EXPECT_EQ(box("driverHangs"), nullptr);
}

TEST_F(DriverNotices, AreAnsweredByKeys) {
  const struct {
    const char* what;
    Qt::Key key;
    Qt::KeyboardModifiers with;
    Next next;
  } keys[] = {
      {"Enter", Qt::Key_Return, Qt::NoModifier, Next::wait},
      {"Esc", Qt::Key_Escape, Qt::NoModifier, Next::wait},
      {"Alt+W", Qt::Key_W, Qt::AltModifier, Next::wait},
      {"Alt+R", Qt::Key_R, Qt::AltModifier, Next::giveUp},
  };
  for (const auto& [what, key, with, next] : keys) {
    SCOPED_TRACE(what);
    waits(3s);
    ASSERT_NE(box("driverHangs"), nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(box("driverHangs")));
    QTest::keyClick(box("driverHangs"), key, with);
    EXPECT_TRUE(isGone("driverHangs"));
    EXPECT_EQ(waits(3s), next);
    notice.waitEnded();
  }
  for (const auto& [key, with] :
       {std::pair(Qt::Key_Return, Qt::NoModifier), std::pair(Qt::Key_Escape, Qt::NoModifier),
        std::pair(Qt::Key_O, Qt::AltModifier)}) {
    notice.lost("it crashed");
    ASSERT_NE(box("driverLost"), nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(box("driverLost")));
    QTest::keyClick(box("driverLost"), key, with);
    EXPECT_TRUE(isGone("driverLost")) << key;
  }
}

TEST_F(DriverNotices, SayThatADriverCrashedUnlessTheProgramEnds) {
  notice.lost("it crashed");
  ASSERT_NE(box("driverLost"), nullptr);
  EXPECT_EQ(box("driverLost")->text(), "it crashed");
  EXPECT_FALSE(box("driverLost")->isModal()) << "the action goes on";
  box("driverLost")->close();
  EXPECT_FALSE(notice.isEnding());
  int lostInEnding = 0;
  notice.onLostInEnding = [&lostInEnding] { ++lostInEnding; };
  notice.endSoon();
  EXPECT_TRUE(notice.isEnding());
  notice.lost("it crashed again");
  EXPECT_EQ(lostInEnding, 1);
  EXPECT_EQ(box("driverLost"), nullptr);
}

class Painted final : public QPushButton {
 public:
  int times = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++times;
    QPushButton::paintEvent(event);
  }
};

TEST_F(DriverNotices, AreAllThatCanBeUsedWhileTheClockStands) {
  Painted button;
  int clicks = 0;
  int ticks = 0;
  QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
  button.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&button));
  const auto timer = realClock.makeTimer([&ticks] { ++ticks; });
  timer->start(0ms);
  waits(3s);
  auto* const wait = find<QPushButton>(*box("driverHangs"), "cmdWait");
  const int painted = button.times;
  button.update();
  int asked = 0;
  realClock.stand(1h, [&](std::chrono::milliseconds longest) {
    EXPECT_LE(longest, 10ms) << "a window that is not painted is seen";
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    if (++asked == 3) QTest::mouseClick(wait, Qt::LeftButton);
    return asked == 3;
  });
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(ticks, 0);
  EXPECT_GT(button.times, painted);
  EXPECT_EQ(box("driverHangs"), nullptr) << "the notice itself can be used";
  realClock.delay(1ms, nullptr);
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_GT(ticks, 0);
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace touch::test
