#include "ui/guarded_application.h"

#include <new>

#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

TEST(GuardedApplication, GivesUpWhatRunsOutOfMemoryAndSaysSoOnce) {
  int boxes = 0;
  for (int i = 0; i < 2; ++i)
    QTimer::singleShot(0, qApp, [] { throw std::bad_alloc(); });
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&boxes] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    EXPECT_TRUE(box->text().contains("not enough memory"));
    ++boxes;
    box->close();
  });
  look.start(0);
  EXPECT_TRUE(QTest::qWaitFor([&boxes] { return boxes > 0; }));
  QApplication::processEvents();
  EXPECT_EQ(boxes, 1);
}

}  // namespace
}  // namespace touch::test
