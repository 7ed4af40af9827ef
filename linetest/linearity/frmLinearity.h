#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/driver/simulation.h"
#include "core/messages/messages.h"
#include "linetest/linearity/linearity_procedure.h"
#include "linetest/linearity/linearity_setup.h"
#include "support/prompt.h"
#include "ui/screens/full_screen_window.h"

class QFrame;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace touch {

class FingerSpinBox;
class frmLinearityResult;
class TouchCanvas;

/// What the linearity tester lives on. All of it outlives the window.
struct LinearityParts {
  Prompt& prompt;
  const MessageTable& messages;
  LinearitySetup& setup;
  std::filesystem::path workingFolder;  ///< where the result files are
};

/// The full-screen linearity tester: asks for the panel's size, guides through the lines, shows the
/// results.
class frmLinearity final : public FullScreenWindow {
  Q_OBJECT

 public:
  /// In a simulated run the ink is drawn where `controller` reports the pointer.
  frmLinearity(LinearityParts parts, const Simulation& simulation, std::string controller,
               const QScreen& screen, const std::optional<QSize>& size,
               std::function<void()> onLeft);
  ~frmLinearity() override;

 protected:
  void started() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makeSizePage();
  QWidget* makeGuidePage();
  QFrame* makeGuidePanel();
  QPushButton* guideButton(const char* name, const QString& caption, const QString& hint,
                           std::function<void()> action);

  void sizeEntered();
  void begin();
  /// Takes up what an earlier run has measured: without a question when that is all, else as the
  /// user says; false when the question was taken away.
  bool takeUpEarlierResults();
  /// Left in their places they would be taken for results of the panel that is measured now.
  void putAside(std::span<const TestLine> lines);
  void measureAnew();
  MeasuredPanel measuredPanel() const;
  void followSize();
  void next();
  void back();
  void backToLines();
  void repeat();
  void penDown(TwipsPoint at);
  void penMoved(TwipsPoint at);
  void penUp();
  void showLine(const QString& note = {});
  void showResults();
  void arrangePanel(int columns);
  void placePanel();

  LinearityParts parts_;
  std::optional<LinearityProcedure> procedure_;
  TwipsPoint pen_;

  QStackedWidget* pages_;
  FingerSpinBox* panelWidth_;
  FingerSpinBox* panelHeight_;
  QWidget* guidePage_ = nullptr;
  TouchCanvas* canvas_;
  QFrame* guidePanel_ = nullptr;
  QLabel* lineTitle_;
  QLabel* instruction_;
  std::vector<QPushButton*> guideButtons_;
  QPushButton* backButton_ = nullptr;
  QPushButton* repeatButton_ = nullptr;
  QPushButton* nextButton_ = nullptr;
  frmLinearityResult* resultPage_;
};

}  // namespace touch
