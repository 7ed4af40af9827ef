#pragma once

#include "calibration/calibration.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// Remembers what is shown, and where the targets are, by their outer ring.
class RecordingScreen final : public CalibrationScreen, private Surface {
 public:
  Surface& surface() override { return *this; }
  void showButtons(bool start, bool cancel) override { buttons = {start, cancel}; }
  void showTimeBar(float width) override { barWidth = width; }
  void allowExit(bool allowed) override { exitAllowed = allowed; }
  void leave() override {
    ++left;
    if (failsToLeave) throw std::bad_alloc();
  }
  void ended(CalibrationOutcome how) override { endings.push_back(how); }

  std::pair<bool, bool> buttons;  ///< "Start" and "Cancel"
  bool exitAllowed = false;
  float barWidth = 0;
  int left = 0;
  bool failsToLeave = false;
  std::vector<CalibrationOutcome> endings;
  std::vector<TwipsPoint> targets;
  std::vector<TwipsPoint> done;

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint centre, float radius, Colour colour, int) override {
    if (radius == 250 && colour == white) targets.push_back(centre);
    if (radius == 250 && colour == yellow) done.push_back(centre);
  }
};

}  // namespace touch::test
