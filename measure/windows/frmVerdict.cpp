#include "measure/windows/frmVerdict.h"

#include <QBuffer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollArea>
#include <QScroller>
#include <QStyle>
#include <QStyleOption>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "measure/report/words.h"
#include "ui/controls/chart_painter.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/controls/scrollable.h"
#include "ui/controls/verdict_colour.h"
#include "ui/page_keys.h"
#include "ui/text.h"

namespace touch::measure {

namespace {

constexpr int reportWidth = 1600;
constexpr int reportDotsPerInch = 600;

enum VerdictColumn : std::uint8_t {
  figureColumn,
  measuredColumn,
  limitColumn,
  shareColumn,
  verdictColumn
};

}  // namespace

QColor outcomeColour(Outcome outcome, const QPalette& window) {
  if (outcome == Outcome::incomplete) return coloursOf(window).remark;
  return verdictColour(outcome == Outcome::pass, window);
}

QByteArray measurementPng(const Report& report) {
  const ReportPages pages(report);
  const int pageHeight = static_cast<int>(reportWidth * mapPage.height / mapPage.width);
  const auto count = static_cast<int>(pages.count());
  QImage image(reportWidth, pageHeight * count, QImage::Format_RGB32);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    for (int page = 0; page < count; ++page)
      paintPage(
          painter, QRectF(0, page * pageHeight, reportWidth, pageHeight), mapPage,
          [&](ChartSurface& surface) { pages.draw(surface, static_cast<std::size_t>(page)); });
  }
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return content;
}

QByteArray measurementPdf(const Report& report) {
  const ReportPages pages(report);
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle("Measurement");
    writer.setResolution(reportDotsPerInch);
    writer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF()));
    QPainter painter(&writer);
    for (std::size_t page = 0; page < pages.count(); ++page) {
      if (page > 0) writer.newPage();
      paintPage(painter, QRectF(0, 0, writer.width(), writer.height()), mapPage,
                [&](ChartSurface& surface) { pages.draw(surface, page); });
    }
  }
  return content;
}

/// The map as large as there is room.
class frmVerdict::MapView final : public QWidget {
 public:
  explicit MapView(const std::optional<Report>& report) : report_(report) {
    setObjectName("errorMap");
    presentAsGraphic(*this, frmVerdict::tr("Map of errors"),
                     frmVerdict::tr("How far touches miss in each place of the panel."));
    setFocusPolicy(Qt::StrongFocus);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (report_ && report_->map) {
      paintPage(painter, rect(), mapPage, [this](ChartSurface& surface) {
        drawMap(surface, *report_->map, report_->measurement);
      });
    } else {
      painter.setPen(Qt::black);
      painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                       frmVerdict::tr("There is no map yet: it needs at least two lines in each "
                                      "direction, or taps."));
    }
    if (!hasFocus()) return;
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
  }

 private:
  const std::optional<Report>& report_;
};

frmVerdict::frmVerdict(QWidget* parent)
    : QWidget(parent),
      icons_{style()->standardIcon(QStyle::SP_DialogApplyButton),
             style()->standardIcon(QStyle::SP_MessageBoxWarning),
             style()->standardIcon(QStyle::SP_MessageBoxCritical)},
      icon_(new QLabel),
      verdict_(new QLabel),
      panel_(new QLabel),
      pages_(new QTabWidget),
      figures_(makeFigures()),
      map_(new MapView(report_)),
      causes_(new QLabel) {
  setObjectName("frmVerdict");
  verdict_->setObjectName("verdictWord");
  QFont large = resized(font(), isSmallScreen() ? 1.5 : 2.2);
  large.setBold(true);
  verdict_->setFont(large);
  panel_->setObjectName("verdictPanel");
  panel_->setWordWrap(true);
  causes_->setObjectName("verdictCauses");
  causes_->setTextFormat(Qt::RichText);
  causes_->setWordWrap(true);
  causes_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  causes_->setMargin(8);

  pages_->setObjectName("verdictPages");
  addPageKeys(*this, *pages_);
  pages_->addTab(figures_, tr("Figures"));
  pages_->addTab(map_, tr("Map"));
  pages_->addTab(scrollable(causes_), tr("Causes and advice"));

  auto* const banner = new QHBoxLayout;
  banner->addWidget(icon_);
  banner->addWidget(verdict_);
  banner->addWidget(panel_, 1);
  auto* const layout = new QVBoxLayout(this);
  const int margin = isSmallScreen() ? 2 : 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->addLayout(banner);
  layout->addWidget(pages_, 1);
}

frmVerdict::~frmVerdict() = default;

QTreeWidget* frmVerdict::makeFigures() {
  auto* const figures = new QTreeWidget;
  figures->setObjectName("verdictFigures");
  figures->setAccessibleName(tr("Figures beside their limits"));
  figures->setHeaderLabels(
      {tr("Figure"), tr("Measured"), tr("Limit"), tr("% of side"), tr("Verdict")});
  figures->header()->setStretchLastSection(false);
  figures->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  // On a small screen what has no room is scrolled to.
  if (!isSmallScreen()) figures->header()->setSectionResizeMode(figureColumn, QHeaderView::Stretch);
  figures->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  figures->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  figures->setExpandsOnDoubleClick(false);
  figures->setWordWrap(true);
  figures->setMinimumHeight(2 * fingerSize());
  QScroller::grabGesture(figures->viewport(), QScroller::LeftMouseButtonGesture);
  connect(figures, &QTreeWidget::itemClicked, figures,
          [](QTreeWidgetItem* item) { item->setExpanded(!item->isExpanded()); });
  return figures;
}

void frmVerdict::takeFocus() {
  pages_->setFocus();
}

void frmVerdict::showMeasurement(Measurement measurement) {
  waiting_ = std::move(measurement);
  if (!isAnalysing_) analyseNext();
}

void frmVerdict::analyseNext() {
  isAnalysing_ = true;
  icon_->clear();
  verdict_->setPalette(palette());
  verdict_->setText(tr("Analysing …"));
  // What it has done is sent here, and comes only as long as this page is there.
  worker_ = std::jthread([this, measurement = std::move(*waiting_)]() mutable {
    const auto done = std::make_shared<Report>();
    done->analysis = analyse(measurement);
    if (done->analysis.field) done->map = mapOf(*done->analysis.field);
    done->measurement = std::move(measurement);
    QMetaObject::invokeMethod(
        this,
        [this, done] {
          isAnalysing_ = false;
          if (waiting_) return analyseNext();
          // In the user's words, which belong to this thread.
          done->verdict = judge(done->measurement, done->analysis);
          report_ = std::move(*done);
          fill();
          emit shown();
        },
        Qt::QueuedConnection);
  });
  waiting_.reset();
}

void frmVerdict::fill() {
  const Outcome outcome = report_->verdict.outcome();
  const int side = isSmallScreen() ? 24 : 40;
  icon_->setPixmap(iconOf(outcome).pixmap(side));
  icon_->setAccessibleName(wordOf(outcome));
  icon_->setAccessibleDescription(wordOf(outcome));
  verdict_->setText(wordOf(outcome));
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, outcomeColour(outcome, colours));
  verdict_->setPalette(colours);
  panel_->setText(shownText(panelText(report_->measurement.size)));
  fillFigures();
  map_->update();
  causes_->setText(causesAndAdvice());
}

const QIcon& frmVerdict::iconOf(Outcome outcome) const {
  return icons_[static_cast<std::size_t>(outcome)];
}

void frmVerdict::showOutcome(QTreeWidgetItem& item, Outcome outcome, bool isBold) {
  item.setText(verdictColumn, wordOf(outcome));
  item.setIcon(verdictColumn, iconOf(outcome));
  for (const VerdictColumn column : {figureColumn, measuredColumn, verdictColumn}) {
    if (outcome != Outcome::pass || column == verdictColumn)
      item.setForeground(column, outcomeColour(outcome, palette()));
    QFont shown = figures_->font();
    shown.setBold(isBold || outcome != Outcome::pass);
    item.setFont(column, shown);
  }
}

QTreeWidgetItem* frmVerdict::addSubject(const Subject& subject) {
  const PanelSize& size = report_->measurement.size;
  auto* const whole = new QTreeWidgetItem(figures_);
  whole->setText(figureColumn, shownText(subjectName(subject.name)));
  whole->setSizeHint(figureColumn, QSize(0, fingerSize()));
  showOutcome(*whole, subject.outcome(), true);
  for (const Check& check : subject.checks) {
    auto* const row = new QTreeWidgetItem(whole);
    row->setText(figureColumn, spokenText("measure", check.words));
    row->setText(measuredColumn, shownText(valueText(check.value, check.unit, size)));
    row->setText(limitColumn, (check.atLeast ? QStringLiteral("≥ ") : QStringLiteral("≤ ")) +
                                  shownText(valueText(check.limit, check.unit, size)));
    if (check.share) row->setText(shareColumn, shownNumber(check.share->value, 2) + " %");
    for (const VerdictColumn column : {measuredColumn, limitColumn, shareColumn})
      row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    showOutcome(*row, check.outcome, false);
  }
  for (const std::string& remark : subject.remarks) {
    auto* const row = new QTreeWidgetItem(whole, {shownText(remark)});
    row->setFirstColumnSpanned(true);
    // It lies across all columns; none is to be as wide as it is.
    const int lines = isSmallScreen() ? 2 : 1;
    row->setSizeHint(figureColumn, QSize(0, lines * figures_->fontMetrics().height() + 2));
    row->setToolTip(figureColumn, shownText(remark));
  }
  return whole;
}

void frmVerdict::fillFigures() {
  figures_->clear();
  for (const Subject& subject : report_->verdict.subjects) {
    QTreeWidgetItem* const item = addSubject(subject);
    item->setExpanded(subject.outcome() != Outcome::pass);
  }
}

QString frmVerdict::causesAndAdvice() const {
  const PanelSize& size = report_->measurement.size;
  QString text;
  const auto add = [&](const char* tag, std::string_view line) {
    text += QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), shownText(line).toHtmlEscaped());
  };
  const auto causes = causeTexts(report_->analysis, report_->verdict.outcome(), size);
  for (const CauseText& cause : causes) {
    add("h4", cause.heading);
    text += "<ul>";
    for (const std::string& sign : cause.signs)
      add("li", sign);
    text += "</ul>";
    add("p", cause.nextStep);
  }
  if (causes.empty())
    add("p", tr("Nothing is wrong as far as this measurement can tell.").toStdString());
  if (!report_->analysis.advice) return text;
  add("h4", tr("Calibration").toStdString());
  for (const std::string& sentence : adviceTexts(*report_->analysis.advice, size))
    add("p", sentence);
  return text;
}

}  // namespace touch::measure
