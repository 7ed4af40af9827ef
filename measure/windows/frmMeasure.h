#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/driver/simulation.h"
#include "core/messages/messages.h"
#include "measure/measurement.h"
#include "measure/windows/measure_setup.h"
#include "measure/windows/reported_touch.h"
#include "support/clock.h"
#include "support/prompt.h"
#include "ui/screens/full_screen_window.h"

class QStackedWidget;

namespace touch::measure {

class frmLines;
class frmMeasureResult;
class frmMeasureStart;
class frmTouchTest;

/// What measuring lives on. All of it outlives the window.
struct MeasureParts {
  Clock& clock;
  Prompt& prompt;
  const MessageTable& messages;
  MeasureSetup& setup;
  std::filesystem::path workingFolder;      ///< where the files of the lines are
  Conditions known{};                       ///< what the program knows without asking
  TouchStream* stream = nullptr;            ///< null: no controller's reports can be read
  std::vector<PortChoice> ports{};          ///< that they may come from
  std::optional<GuidedMeasuring> guided{};  ///< nothing: the user chooses what to measure
};

/// The full-screen window that measures a panel: it asks what to measure, guides through the tests,
/// and shows the results.
class frmMeasure final : public FullScreenWindow {
  Q_OBJECT

 public:
  /// In a simulated run touches are where `controller` reports them.
  frmMeasure(MeasureParts parts, const Simulation& simulation, std::string controller,
             const QScreen& screen, const std::optional<QSize>& size, std::function<void()> onLeft);
  ~frmMeasure() override;

  void askToLeave() override;

 protected:
  void started() override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  PanelSize knownSize() const;
  ReportSource reports() const;
  bool listen();
  void listenNoMore();
  void start();
  void openStored();
  void begin(std::size_t step);
  void keep();
  void measureAnew();
  void showResults();
  void back();

  MeasureParts parts_;
  const QScreen& screen_;
  Measurement measurement_;
  bool isStored_ = false;
  std::size_t step_ = 0;  ///< of the plan's tests

  QStackedWidget* pages_;
  frmMeasureStart* startPage_;
  frmLines* linesPage_;
  frmTouchTest* touchPage_;
  frmMeasureResult* resultPage_;
  std::optional<ReportedTouch> touch_;
};

}  // namespace touch::measure
