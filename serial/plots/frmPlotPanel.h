#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "serial/plots/report_series.h"

class QLabel;
class QPushButton;

namespace touch {

class PlotPicture;

/// X, Y and the interval between reports over time, of what comes in or of a recording; as numbers
/// too, and as CSV.
class frmPlotPanel final : public QWidget {
  Q_OBJECT

 public:
  using MakeSeries = std::function<std::unique_ptr<ReportSeries>()>;

  /// `makeSeries` makes an empty one for the reports as they are known now.
  frmPlotPanel(MakeSeries makeSeries, std::filesystem::path workFolder, QWidget* parent = nullptr);
  ~frmPlotPanel() override;

  /// It shows what comes in, and wants to be told of it.
  bool isLive() const { return live_; }
  void take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes);
  /// Shows what was taken since.
  void renew();

 signals:
  void statusChanged(const QString& text);

 private:
  QPushButton* makeButton(const char* name, const QString& caption,
                          const std::function<void()>& action);
  void begin(bool live);
  void openRecording();
  void save();
  void look(const std::optional<TimeRange>& range);
  TimeRange shownRange() const;

  MakeSeries makeSeries_;
  std::filesystem::path workFolder_;
  std::unique_ptr<ReportSeries> series_;
  bool live_ = true;
  std::optional<TimeRange> range_;  ///< none: all of it
  std::size_t drawn_ = 0;           ///< reports
  PlotPicture* picture_;
  QLabel* figures_;
};

}  // namespace touch
