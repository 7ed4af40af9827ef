#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "serial/plots/recorded_curves.h"
#include "serial/plots/report_series.h"
#include "serial/plots/report_table.h"
#include "support/clock.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace touch {

class PlotPicture;

/// X, Y and the interval between reports over time, of what comes in or of a recording; as numbers
/// too, and as CSV. A recording is read in pieces, between which the window goes on, and so is its
/// table written; the user sees how far it is and can end it.
class frmPlotPanel final : public QWidget {
  Q_OBJECT

 public:
  /// Where files are sought and saved first.
  struct Folders {
    std::filesystem::path recordings;
    std::filesystem::path tables;
  };

  /// `makeReader` makes one for the reports as they are known now. The clock outlives it.
  frmPlotPanel(Clock& clock, RecordedCurves::MakeReader makeReader, Folders folders,
               QWidget* parent = nullptr);
  ~frmPlotPanel() override;

  /// It shows what comes in, and wants to be told of it.
  bool isLive() const { return curves_ == nullptr; }
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
            const LineSettings& line);
  /// Shows what was taken since.
  void renew();

 signals:
  void statusChanged(const QString& text);

 private:
  QPushButton* makeButton(const char* name, const QString& caption,
                          const std::function<void()>& action);
  void begin();
  void openRecording();
  QWidget* makeReadingBar();
  void goOn();
  void readOn();
  void saveOn();
  void cancel();
  void showProgress(double progress);
  void endReading(const QString& outcome);
  void endSaving(const QString& outcome);
  /// `text` with the name of the recording and how many reports were read.
  QString counted(const QString& text) const;
  void save();
  void look(const std::optional<TimeRange>& range);
  void draw();
  bool isWaitedFor() const;
  const ReportSeries& whole() const { return curves_ ? curves_->whole() : live_; }
  const ReportSeries& shown() const { return curves_ ? curves_->best(shownRange()) : live_; }
  TimeRange shownRange() const;

  RecordedCurves::MakeReader makeReader_;
  Folders folders_;
  ReportSeries live_;
  std::unique_ptr<RecordedCurves> curves_;  ///< of the recording that is shown
  std::optional<ReportTableFile> saving_;
  std::optional<TimeRange> range_;  ///< none: all of it
  std::uint64_t drawn_ = 0;         ///< reports
  std::unique_ptr<Timer> reader_;
  QString name_;  ///< of the recording
  QString savedIn_;
  PlotPicture* picture_;
  QLabel* figures_;
  QProgressBar* progress_;
  QWidget* readingBar_ = nullptr;
};

}  // namespace touch
