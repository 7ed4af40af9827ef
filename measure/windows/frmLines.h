#pragma once

#include <QWidget>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/driver/simulation.h"
#include "core/messages/messages.h"
#include "measure/judging/verdict.h"
#include "measure/lines/line_procedure.h"
#include "measure/windows/reported_touch.h"
#include "support/prompt.h"

class QPushButton;

namespace touch {
class TouchCanvas;
}

namespace touch::measure {

class frmGuideBox;

/// Guides through the lines of a measurement and takes their strokes. Each line that is kept is
/// also a file in the working folder, and taken up from there.
class frmLines final : public QWidget {
  Q_OBJECT

 public:
  /// In a simulated run the ink is drawn where `controller` reports the pointer.
  frmLines(Prompt& prompt, const MessageTable& messages, std::filesystem::path folder,
           const Simulation& simulation, std::string controller, ReportSource reports,
           QWidget* parent = nullptr);

  /// Begins with the lines of `measurement`, which outlives it, and those of an earlier run:
  /// without a question when that are all, else as the user says; false when the question was taken
  /// away.
  bool begin(Measurement& measurement);
  /// The files of the lines that are there get other names, so that no line is taken up again.
  void putFilesAside();
  /// The line where the user was; the last one when all are kept.
  void comeBack();
  void drawAgain(const Guide& guide);
  /// Writes all files anew, for a panel of another size.
  void writeFiles();
  bool isBusy() const { return procedure_ && procedure_->penIsDown(); }

 signals:
  void kept();      ///< a line has been added to the measurement
  void finished();  ///< there is no further line
  void resultsRequested();
  void leaveRequested();
  /// Lines that were drawn on a screen of another size lie elsewhere on this one.
  void screenChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void addButtons();
  bool takeUpEarlierLines();
  /// Left in their places they would be taken for lines of the panel that is measured now.
  void putAside(std::span<const Guide* const> guides);
  void next();
  void back();
  void repeat();
  PenSample sampleAt(TwipsPoint at) const;
  void penDown(TwipsPoint at);
  void penMoved(TwipsPoint at);
  void penUp();
  void askForBlame();
  void showLine(const QString& note = {});
  QString instructionFor(const Guide& guide) const;
  /// Nothing before it was drawn.
  std::optional<Outcome> outcomeOf(const Guide& guide) const;
  void arrangeBox(int columns);
  void placeBox();

  Prompt& prompt_;
  const MessageTable& messages_;
  std::filesystem::path folder_;
  ReportSource reports_;
  Measurement* measurement_ = nullptr;
  std::optional<LineProcedure> procedure_;
  TwipsPoint pen_;

  TouchCanvas* canvas_;
  frmGuideBox* box_;
  QPushButton* backButton_ = nullptr;
  QPushButton* repeatButton_ = nullptr;
};

}  // namespace touch::measure
