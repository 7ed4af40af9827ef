#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <cmath>
#include <string>

#include "bench/subjects.h"
#include "bench/tools/scratch_folder.h"
#include "bench/tools/silent_prompt.h"
#include "core/messages/messages.h"
#include "linetest/canvas/frmDraw.h"
#include "ui/event_loop_clock.h"

namespace touch::bench {

namespace {

constexpr QSize screenSize(1920, 1080);
constexpr int moves = 5000;

/// Places of a pointer that goes round on the screen, a few pixels a step, where no tools lie over
/// the canvas.
class Path {
 public:
  QPointF next() {
    ++step_;
    const double angle = 0.01 * step_;
    return {1400 + 300 * std::cos(angle), 400 + 300 * std::sin(angle * 1.1)};
  }

 private:
  int step_ = 0;
};

/// The drawing canvas with a hand on it. Strokes are recorded, but none along a line.
class DrawingDesk {
 public:
  DrawingDesk() {
    window_.open();
    QCoreApplication::processEvents();
    canvas_ = window_.findChild<QWidget*>("drawingCanvas");
  }

  void press(const QPointF& at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton); }
  void release(const QPointF& at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton); }
  void move(const QPointF& at) { send(QEvent::MouseMove, at, Qt::NoButton); }
  /// Paints what has been touched, as the event loop would.
  void paint() { QCoreApplication::sendPostedEvents(); }
  void recordStrokes() { switches_.toleranceTest = true; }

 private:
  void send(QEvent::Type type, const QPointF& at, Qt::MouseButton button) {
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, at, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas_, &event);
  }

  ScratchFolder folder_;
  EventLoopClock clock_;
  SilentPrompt prompt_;
  MessageTable messages_;
  DrawingSwitches switches_;
  WorkingFiles files_{folder_.path(), folder_.path()};
  frmDraw window_{{clock_, prompt_, messages_, switches_, files_, folder_.path()},
                  Simulation(),
                  {},
                  *QGuiApplication::primaryScreen(),
                  screenSize,
                  [] {}};
  QWidget* canvas_ = nullptr;
};

void movePointer(benchmark::State& state, int strokes) {
  constexpr int movesInStroke = 20;
  DrawingDesk desk;
  Path path;
  for (int i = 0; i < strokes; ++i) {
    desk.press(path.next());
    for (int step = 0; step < movesInStroke; ++step)
      desk.move(path.next());
    desk.release(path.next());
    desk.paint();
  }
  desk.recordStrokes();
  desk.press(path.next());
  desk.paint();
  for (auto _ : state) {
    desk.move(path.next());
    desk.paint();
  }
}

void drawSegment(benchmark::State& state) {
  QImage image(screenSize, QImage::Format_RGB32);
  image.fill(Qt::black);
  Path path;
  QPointF from = path.next();
  for (auto _ : state) {
    const QPointF to = path.next();
    QPainter painter(&image);
    painter.setPen(QPen(Qt::red, 1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(from, to);
    from = to;
  }
}

}  // namespace

void registerCanvas() {
  for (const int strokes : {1, 100, 10'000}) {
    benchmark::RegisterBenchmark(
        ("canvas/" + std::to_string(strokes)).c_str(),
        [strokes](benchmark::State& state) { movePointer(state, strokes); })
        ->Iterations(moves);
  }
  benchmark::RegisterBenchmark("canvas/segment", drawSegment)->Iterations(moves);
}

}  // namespace touch::bench
