#include <QTest>
#include <QtWidgets>

#include "tests/doubles/test.h"
#include "ui/screens/canvas_widget.h"

namespace touch::test {
namespace {

/// What of the window has come to the screen.
QImage shown(const QWidget& window) {
  return static_cast<const QImage*>(window.backingStore()->paintDevice())->copy();
}

}  // namespace

// Only a window that is painted for the screen has its ink copied; what it should look like says
// one that is painted into a picture.
TEST(CanvasWidget, ShowsItsPictureWhereItLies) {
  QWidget window;
  window.resize(400, 300);
  CanvasWidget canvas(&window);
  canvas.setGeometry(35, 21, 420, 250);  // beyond the window's edge
  QWidget above(&window);  // opaque, so that nothing is painted below it and ink would stay on it
  above.setAutoFillBackground(true);
  above.setGeometry(100, 100, 90, 40);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QApplication::processEvents();
  const QImage empty = shown(window);

  canvas.line({0, 0}, {6000, 3750}, {255, 0, 0}, 3);
  canvas.circle({1500, 1500}, 400, {0, 255, 0}, 2);
  canvas.line({5900, 100}, {6300, 100}, {0, 0, 255}, 1);
  QApplication::processEvents();
  EXPECT_NE(shown(window), empty);
  EXPECT_EQ(shown(window), window.grab().toImage().convertToFormat(empty.format()));

  canvas.move(10, 2);
  QApplication::processEvents();
  EXPECT_EQ(shown(window), window.grab().toImage().convertToFormat(empty.format()));
}

}  // namespace touch::test
