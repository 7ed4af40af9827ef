#pragma once

#include <QApplication>

#include "core/simulation.h"
#include "linetest/test_parts.h"
#include "tests/support/temporary_folder.h"
#include "tests/windows/window_desk.h"

namespace touch::test {

/// What the drawing windows need, the simulated driver beside it, and a hand that draws.
class DrawingDesk : public WindowDesk {
 protected:
  DrawingDesk() {
    auto bound = NexapiDriver::bind(SIMULATOR_LIBRARY);
    if (!bound) throw std::runtime_error(bound.error().describe());
    simulator_ = std::move(*bound);
    simulation = Simulation::of(*simulator_);
    simulation->request("reset");
  }

  /// Draws from place to place, `steps` moves for each way, and lifts.
  static void draw(QWidget* canvas, const std::vector<QPoint>& places, int steps = 8) {
    QTest::mousePress(canvas, Qt::LeftButton, {}, places.front());
    for (std::size_t i = 1; i < places.size(); ++i) {
      for (int step = 1; step <= steps; ++step)
        QTest::mouseMove(canvas, places[i - 1] + (places[i] - places[i - 1]) * step / steps);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, places.back());
  }

  static QRgb colourAt(QWidget& canvas, const QPoint& place) {
    return canvas.grab().toImage().pixel(place);
  }
  /// Whether anything of this colour lies within three pixels.
  static bool hasColourNear(QWidget& canvas, const QPoint& place, QRgb colour) {
    const QImage image = canvas.grab().toImage();
    for (int y = place.y() - 3; y <= place.y() + 3; ++y)
      for (int x = place.x() - 3; x <= place.x() + 3; ++x)
        if (image.valid(x, y) && image.pixel(x, y) == colour) return true;
    return false;
  }

  static bool contains(const Lines& lines, const std::string& text) {
    return std::find(lines.begin(), lines.end(), text) != lines.end();
  }

  TemporaryFolder folder;
  DrawingSwitches switches;
  LinearitySetup linearity;
  WorkingFiles files{folder.path(), folder.path()};
  std::optional<Simulation> simulation;
  std::string controller = "USB DEVICE 2";

 private:
  std::unique_ptr<NexapiDriver> simulator_;
};

}  // namespace touch::test
