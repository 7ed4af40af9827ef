#include "serial/plots/frmPlotPanel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "support/files/whole_file.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

constexpr double closer = 0.5;
constexpr double farther = 2;
constexpr double aStep = 0.5;

using namespace std::chrono_literals;

// A hundredth of a second on a usual machine.
constexpr std::size_t transfersInAPiece = 30'000;
constexpr auto betweenPieces = 1ms;
// Who turns the wheel does not want to see every place on the way.
constexpr auto beforeLookingCloser = 200ms;
constexpr int wholeProgress = 1000;

}  // namespace

/// Three curves, one below the other.
class PlotPicture final : public QWidget {
 public:
  PlotPicture() {
    setObjectName("plotPicture");
    setMinimumHeight((isSmallScreen() ? 2 : 3) * fingerSize());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }
  void show(const ReportSeries& series, const TimeRange& range) {
    series_ = &series;
    range_ = range;
    presentAsGraphic(*this, frmPlotPanel::tr("Curves of X, Y and the interval"),
                     frmPlotPanel::tr("%1 reports in %2 s")
                         .arg(series.count(range))
                         .arg(std::chrono::duration<double>(range.length()).count()));
    update();
  }
  std::function<void(double)> onZoom;
  std::function<void(double)> onMove;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    if (series_ == nullptr) return;
    const auto columns = series_->columns(range_, static_cast<std::size_t>(width()));
    std::chrono::microseconds longest{1};
    for (const PlotColumn& column : columns)
      longest = std::max(longest, column.longest);
    const int band = height() / 3;
    const RawCounts most = series_->greatest();
    QString caption = frmPlotPanel::tr("X, 0 to %1").arg(most.value);
    if (series_->every() > 1)
      caption = frmPlotPanel::tr("About one report in %1 is shown").arg(series_->every()) + "   " +
                caption;
    drawBand(painter, 0, band, caption);
    drawBand(painter, band, band, frmPlotPanel::tr("Y, 0 to %1").arg(most.value));
    drawBand(painter, 2 * band, band,
             frmPlotPanel::tr("Interval, up to %1 ms")
                 .arg(static_cast<double>(longest.count()) / 1000, 0, 'f', 1));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const PlotColumn& column = columns[i];
      if (column.reports == 0) continue;
      const auto stroke = [&](int top, double low, double high) {
        const double x = static_cast<double>(i);
        // Below the caption.
        const int room = band - painter.fontMetrics().height() - 4;
        painter.drawLine(QPointF(x, top + band - 2 - low * room),
                         QPointF(x, top + band - 2 - high * room));
      };
      stroke(0, fractionOf(column.x.first, most), fractionOf(column.x.second, most));
      stroke(band, fractionOf(column.y.first, most), fractionOf(column.y.second, most));
      stroke(2 * band, 0,
             static_cast<double>(column.longest.count()) / static_cast<double>(longest.count()));
    }
  }
  void wheelEvent(QWheelEvent* event) override {
    if (onZoom) onZoom(event->angleDelta().y() > 0 ? closer : farther);
  }
  void mousePressEvent(QMouseEvent* event) override { pressed_ = event->position().x(); }
  void mouseMoveEvent(QMouseEvent* event) override {
    const double x = event->position().x();
    if (onMove) onMove((pressed_ - x) / std::max(1, width()));
    pressed_ = x;
  }

 private:
  void drawBand(QPainter& painter, int top, int height, const QString& caption) const {
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(4, top, width() - 8, height), Qt::AlignTop | Qt::AlignRight, caption);
    painter.drawLine(0, top + height - 1, width(), top + height - 1);
  }

  const ReportSeries* series_ = nullptr;
  TimeRange range_;
  double pressed_ = 0;
};

frmPlotPanel::frmPlotPanel(Clock& clock, RecordedCurves::MakeReader makeReader, Folders folders,
                           QWidget* parent)
    : QWidget(parent),
      makeReader_(std::move(makeReader)),
      folders_(std::move(folders)),
      live_(makeReader_()),
      reader_(clock.makeTimer([this] { goOn(); })),
      picture_(new PlotPicture),
      figures_(new QLabel),
      progress_(new QProgressBar) {
  figures_->setObjectName("lblFigures");
  figures_->setWordWrap(true);
  picture_->onZoom = [this](double factor) { look(shownRange().zoomed(factor, whole().range())); };
  picture_->onMove = [this](double part) { look(shownRange().moved(part, whole().range())); };
  const std::initializer_list<QPushButton*> buttons = {
      makeButton("cmdPlotCloser", tr("&+"), [this] { picture_->onZoom(closer); }),
      makeButton("cmdPlotFarther", tr("&-"), [this] { picture_->onZoom(farther); }),
      makeButton("cmdPlotLeft", tr("&<"), [this] { picture_->onMove(-aStep); }),
      makeButton("cmdPlotRight", tr("&>"), [this] { picture_->onMove(aStep); }),
      makeButton("cmdPlotAll", tr("A&ll"), [this] { look(std::nullopt); }),
      makeButton("cmdPlotLive", tr("Begin &anew"), [this] { begin(); }),
      makeButton("cmdPlotRecording", tr("Recordin&g …"), [this] { openRecording(); }),
      makeButton("cmdPlotSave", tr("C&SV …"), [this] { save(); }),
  };
  auto* const bar = new QGridLayout;
  bar->setSpacing(isSmallScreen() ? 2 : 6);
  constexpr int columns = 4;
  int place = 0;
  for (QPushButton* const button : buttons) {
    bar->addWidget(button, place / columns, place % columns);
    ++place;
  }
  readingBar_ = makeReadingBar();
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(bar->spacing());
  column->addLayout(bar);
  column->addWidget(readingBar_);
  column->addWidget(picture_, 1);
  column->addWidget(figures_);
  look(std::nullopt);
}

frmPlotPanel::~frmPlotPanel() = default;

QPushButton* frmPlotPanel::makeButton(const char* name, const QString& caption,
                                      const std::function<void()>& action) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setMinimumWidth(fingerSize());
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

QWidget* frmPlotPanel::makeReadingBar() {
  progress_->setObjectName("plotProgress");
  progress_->setAccessibleName(tr("How much of the recording is done"));
  progress_->setRange(0, wholeProgress);
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(progress_, 1);
  row->addWidget(makeButton("cmdPlotCancel", tr("Cancel"), [this] { cancel(); }));
  bar->hide();
  return bar;
}

void frmPlotPanel::take(std::chrono::microseconds time, std::span<const std::uint8_t> bytes,
                        const LineSettings& line) {
  if (isLive()) live_.take(time, bytes, line);
}

void frmPlotPanel::renew() {
  if (isLive() && live_.taken() != drawn_) draw();
}

void frmPlotPanel::begin() {
  reader_->stop();
  saving_.reset();
  curves_.reset();
  readingBar_->hide();
  live_ = ReportSeries(makeReader_());
  look(std::nullopt);
}

void frmPlotPanel::openRecording() {
  const auto file = askTextFileToOpen(this, tr("Curves of a recording"), folders_.recordings,
                                      tr("Recordings (*.txt)"));
  if (!file) return;
  auto recording = RecordingFile::open(*file);
  if (!recording) {
    emit statusChanged(shownText(recording.error().describe()));
    return;
  }
  begin();
  curves_ = std::make_unique<RecordedCurves>(std::move(*recording), makeReader_);
  name_ = shownText(file->filename().string());
  draw();
  readOn();
}

void frmPlotPanel::goOn() {
  saving_ ? saveOn() : readOn();
}

void frmPlotPanel::readOn() {
  if (!curves_->isReading()) return endReading({});
  const bool isPart = curves_->isReadingPart();
  const Status read = curves_->readOn(transfersInAPiece);
  if (curves_->isReading()) {
    showProgress(curves_->progress());
    return reader_->start(betweenPieces);
  }
  if (!isPart) range_.reset();
  if (!read) return endReading(shownText(read.error().describe()));
  QString outcome;
  if (!isPart) {
    outcome = counted(tr("Reports in %1: %2"));
    if (const auto every = whole().every(); every > 1) {
      outcome += ' ' + tr("About one report in %1 is shown; zoom in until you see all.").arg(every);
    }
  }
  endReading(outcome);
}

void frmPlotPanel::saveOn() {
  const auto more = saving_->writeOn(transfersInAPiece);
  if (!more) return endSaving(shownText(more.error().describe()));
  if (!*more) return endSaving(tr("Saved in %1").arg(savedIn_));
  showProgress(saving_->progress());
  reader_->start(betweenPieces);
}

void frmPlotPanel::cancel() {
  if (saving_) return endSaving(tr("Saving was ended. Nothing was saved."));
  const bool isPart = curves_->isReadingPart();
  curves_->stop();
  if (!isPart) range_.reset();
  endReading(isPart ? QString() : counted(tr("Reading was ended. Reports in %1 so far: %2")));
}

void frmPlotPanel::showProgress(double progress) {
  progress_->setValue(static_cast<int>(progress * wholeProgress));
  readingBar_->show();
}

void frmPlotPanel::endReading(const QString& outcome) {
  reader_->stop();
  readingBar_->hide();
  draw();
  if (!outcome.isEmpty()) emit statusChanged(outcome);
}

void frmPlotPanel::endSaving(const QString& outcome) {
  reader_->stop();
  readingBar_->hide();
  saving_.reset();
  look(range_);
  emit statusChanged(outcome);
}

bool frmPlotPanel::isWaitedFor() const {
  return saving_ || (curves_ && curves_->isReading() && !curves_->isReadingPart());
}

QString frmPlotPanel::counted(const QString& text) const {
  return text.arg(name_, QString::number(whole().taken()));
}

void frmPlotPanel::save() {
  if (isWaitedFor()) {
    emit statusChanged(tr("The recording is still being read."));
    return;
  }
  const auto file = askTextFileToSave(this, tr("Save the reports"), folders_.tables / "reports.csv",
                                      tr("Tables (*.csv)"));
  if (!file) return;
  savedIn_ = shownText(file->string());
  if (isLive()) {
    const auto written = writeWholeFile(*file, live_.csv(shownRange()));
    emit statusChanged(written ? tr("Saved in %1").arg(savedIn_)
                               : shownText(written.error().describe()));
    return;
  }
  // All of the reports, and not only those that are shown.
  auto table = ReportTableFile::begin(*file, curves_->reports(range_));
  if (!table) {
    emit statusChanged(shownText(table.error().describe()));
    return;
  }
  saving_.emplace(std::move(*table));
  saveOn();
}

TimeRange frmPlotPanel::shownRange() const {
  return range_.value_or(whole().range());
}

void frmPlotPanel::look(const std::optional<TimeRange>& range) {
  range_ = range;
  draw();
  if (curves_ && !isWaitedFor() && curves_->lookCloser(shownRange()))
    reader_->start(beforeLookingCloser);
}

void frmPlotPanel::draw() {
  drawn_ = whole().taken();
  picture_->show(shown(), shownRange());
  if (drawn_ == 0) {
    figures_->setText(tr("Touch the panel, or open a recording."));
    return;
  }
  const SeriesFigures figures = shown().figures(shownRange());
  const TimeRange range = shownRange();
  const auto seconds = [this](TimeRange::Time time) {
    return locale().toString(static_cast<double>(time.count()) / 1e6, 'f', 3);
  };
  figures_->setText(
      tr("Reports: %1. Strokes: %2. Reports a second while touched: %3.\n"
         "Scatter, of a resting finger its noise: X %4, Y %5 (from end to end %6 and %7).\n"
         "Read together with later ones, their times reckoned from the line's speed: %8.")
          .arg(figures.reports)
          .arg(figures.strokes)
          .arg(figures.rate ? locale().toString(*figures.rate, 'f', 1) : QString("-"))
          .arg(locale().toString(figures.deviationX, 'f', 1),
               locale().toString(figures.deviationY, 'f', 1))
          .arg(figures.spanX.value)
          .arg(figures.spanY.value)
          .arg(figures.reckoned) +
      tr(" From %1 to %2 s.").arg(seconds(range.from), seconds(range.to)));
}

}  // namespace touch
