#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "serial/plots/report_series.h"
#include "support/clock.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace touch {

class PlotPicture;

/// X, Y and the interval between reports over time, of what comes in or of a recording; as numbers
/// too, and as CSV. A recording is read in pieces, between which the window goes on; the user sees
/// how far it is and can end it.
class frmPlotPanel final : public QWidget {
  Q_OBJECT

 public:
  using MakeSeries = std::function<std::unique_ptr<ReportSeries>()>;

  /// Where files are sought and saved first.
  struct Folders {
    std::filesystem::path recordings;
    std::filesystem::path tables;
  };

  /// `makeSeries` makes an empty one for the reports as they are known now. The clock outlives it.
  frmPlotPanel(Clock& clock, MakeSeries makeSeries, Folders folders, QWidget* parent = nullptr);
  ~frmPlotPanel() override;

  /// It shows what comes in, and wants to be told of it.
  bool isLive() const { return live_; }
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
            const LineSettings& line);
  /// Shows what was taken since.
  void renew();

 signals:
  void statusChanged(const QString& text);

 private:
  QPushButton* makeButton(const char* name, const QString& caption,
                          const std::function<void()>& action);
  void begin(bool live);
  void openRecording();
  QWidget* makeReadingBar();
  void readOn();
  void showProgress();
  void endReading(const QString& outcome);
  /// `text` with the name of the recording and how many reports were read.
  QString counted(const QString& text) const;
  void save();
  void look(const std::optional<TimeRange>& range);
  TimeRange shownRange() const;

  MakeSeries makeSeries_;
  Folders folders_;
  std::unique_ptr<ReportSeries> series_;
  bool live_ = true;
  std::optional<TimeRange> range_;             ///< none: all of it
  std::uint64_t drawn_ = 0;                    ///< reports
  std::unique_ptr<TransferSource> recording_;  ///< while it is read
  std::unique_ptr<Timer> reader_;
  QString name_;  ///< of the recording
  PlotPicture* picture_;
  QLabel* figures_;
  QProgressBar* progress_;
  QWidget* readingBar_ = nullptr;
};

}  // namespace touch
