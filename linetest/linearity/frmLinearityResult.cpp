#include "linetest/linearity/frmLinearityResult.h"

#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "linetest/linearity/linearity_files.h"
#include "support/files/whole_file.h"
#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/status_line.h"
#include "ui/controls/verdict_colour.h"
#include "ui/page_keys.h"
#include "ui/text.h"

namespace touch {

namespace {

struct FigureColumn {
  const char* heading;
  double (*value)(const LineFigures&);
};

constexpr FigureColumn columns[] = {
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Average"),
     [](const LineFigures& f) { return f.all.average; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Maximum"),
     [](const LineFigures& f) { return f.all.maximum; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Minimum"),
     [](const LineFigures& f) { return f.all.minimum; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "RMS"),
     [](const LineFigures& f) { return f.all.rms; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Centre"),
     [](const LineFigures& f) { return f.centre.absoluteMaximum; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Edge"),
     [](const LineFigures& f) { return f.edge.absoluteMaximum; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Offset"),
     [](const LineFigures& f) { return f.offset; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Straightness"),
     [](const LineFigures& f) { return f.straightness; }},
    {QT_TRANSLATE_NOOP("touch::frmLinearityResult", "Gap"),
     [](const LineFigures& f) { return f.largestGap; }},
};

FingerSpinBox* makeLimit(const char* name, const QString& says) {
  auto* const limit = new FingerSpinBox(name, says);
  limit->box().setRange(0.05, 99);
  limit->box().setSingleStep(0.05);
  return limit;
}

}  // namespace

frmLinearityResult::frmLinearityResult(Prompt& prompt, LinearitySetup& setup,
                                       std::filesystem::path folder, QWidget* parent)
    : QWidget(parent),
      prompt_(prompt),
      setup_(setup),
      folder_(std::move(folder)),
      figures_(new QTableWidget(0, static_cast<int>(std::size(columns)) + 2)),
      page_(new frmLinearityPage),
      centreLimit_(makeLimit("limitCentre", tr("Limit in the centre"))),
      edgeLimit_(makeLimit("limitEdge", tr("Limit near the edge"))),
      unit_(new QComboBox),
      verdict_(new QLabel),
      saved_(new StatusLine),
      tabs_(new QTabWidget),
      again_(new QPushButton(tr("&Draw again"))),
      anew_(new QPushButton(tr("&Measure anew"))) {
  setObjectName("linearityResult");
  auto* const scrolled = new QScrollArea;
  scrolled->setWidget(page_);
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setFocusPolicy(Qt::NoFocus);  // the page has it, and hands its arrow keys on
  scrolled->setMinimumHeight(fingerSize());
  tabs_->setObjectName("resultTabs");
  addPageKeys(*this, *tabs_);
  tabs_->addTab(scrolled, tr("Plots and map"));
  tabs_->addTab(makeFigures(), tr("Figures"));

  auto* const layout = new QVBoxLayout(this);
  const int margin = isSmallScreen() ? 2 : 6;
  layout->setContentsMargins(margin, margin, margin, margin);
  layout->setSpacing(isSmallScreen() ? 2 : 6);
  saved_->hide();
  QWidget* const limits = makeLimits();
  QWidget* const exports = makeExports();
  QWidget* const ways = makeWays();
  if (isSmallScreen()) {
    // Each on a page of its own leaves room for the plots.
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    for (QWidget* const part : std::initializer_list<QWidget*>{limits, exports, saved_})
      column->addWidget(part);
    tabs_->addTab(page, tr("Limits, export"));
    layout->addWidget(tabs_, 1);
    layout->addWidget(ways);
    return;
  }
  layout->addWidget(limits);
  layout->addWidget(tabs_, 1);
  auto* const row = new QHBoxLayout;
  row->addWidget(ways, 1);
  row->addWidget(exports, 1);
  layout->addLayout(row);
  layout->addWidget(saved_);
}

void frmLinearityResult::takeFocus() {
  tabs_->setFocus();
}

QWidget* frmLinearityResult::makeFigures() {
  figures_->setObjectName("figuresTable");
  figures_->setAccessibleName(tr("Figures of each line in millimetres"));
  QStringList headings{tr("Line"), tr("Verdict")};
  for (const FigureColumn& column : columns)
    headings << tr(column.heading);
  figures_->setHorizontalHeaderLabels(headings);
  const struct {
    const char* heading;
    QString meaning;
  } meanings[] = {
      {"Centre", tr("Greatest distance from the line, more than 3.5 mm from the panel's edge")},
      {"Edge", tr("Greatest distance from the line within 3.5 mm of the panel's edge")},
      {"Offset", tr("Distance of the best-fitting line from the line, at its middle")},
      {"Straightness", tr("Greatest distance from the best-fitting line")},
      {"Gap", tr("Longest piece without a touch")},
  };
  for (const auto& [heading, meaning] : meanings) {
    if (const auto at = headings.indexOf(tr(heading)); at >= 0) {
      figures_->horizontalHeaderItem(static_cast<int>(at))->setToolTip(meaning);
    }
  }
  figures_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  figures_->horizontalHeader()->setMinimumSectionSize(56);
  figures_->horizontalHeader()->setHighlightSections(false);
  figures_->verticalHeader()->hide();
  figures_->verticalHeader()->setDefaultSectionSize(fingerSize());
  figures_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  figures_->setSelectionBehavior(QAbstractItemView::SelectRows);
  figures_->setSelectionMode(QAbstractItemView::SingleSelection);
  figures_->setTabKeyNavigation(false);
  figures_->setMinimumHeight(2 * fingerSize());
  connect(figures_, &QTableWidget::currentCellChanged, this,
          [this](int row) { again_->setEnabled(row >= 0); });
  return figures_;
}

QWidget* frmLinearityResult::makeLimits() {
  auto* const box = new QWidget;
  auto* const grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(isSmallScreen() ? 2 : 6);
  const struct {
    QString caption;
    FingerSpinBox* limit;
    double value;
  } limits[] = {{tr("Li&mit:"), centreLimit_, setup_.limits.centre},
                {tr("E&dge:"), edgeLimit_, setup_.limits.edge}};
  int column = 0;
  for (const auto& [caption, limit, value] : limits) {
    auto* const label = new QLabel(caption);
    label->setBuddy(&limit->box());
    limit->box().setValue(value);
    grid->addWidget(label, 0, column++);
    grid->addWidget(limit, 0, column++);
  }
  unit_->setObjectName("limitUnit");
  unit_->setAccessibleName(tr("Unit of the limits"));
  unit_->addItems({tr("mm"), tr("percent")});
  unit_->setCurrentIndex(setup_.limits.unit == LimitUnit::millimetres ? 0 : 1);
  verdict_->setObjectName("verdict");
  verdict_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  QFont bold = font();
  bold.setBold(true);
  verdict_->setFont(bold);
  if (isSmallScreen()) {
    grid->addWidget(unit_, 1, 0, 1, 2);
    grid->addWidget(verdict_, 1, 2, 1, 2);
  } else {
    grid->addWidget(unit_, 0, column++);
    grid->addWidget(verdict_, 0, column);
    grid->setColumnStretch(column, 1);
  }
  // Not before all three say what is kept.
  for (const auto& [caption, limit, value] : limits)
    connect(&limit->box(), &QDoubleSpinBox::valueChanged, this, &frmLinearityResult::limitsChanged);
  connect(unit_, &QComboBox::currentIndexChanged, this, &frmLinearityResult::limitsChanged);
  return box;
}

QWidget* frmLinearityResult::makeRow(std::initializer_list<RowButton> buttons) {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  for (const auto& [button, name, action] : buttons) {
    button->setObjectName(name);
    button->setAutoDefault(true);
    row->addWidget(button, 1);
    connect(button, &QPushButton::clicked, this, action);
  }
  return box;
}

QWidget* frmLinearityResult::makeWays() {
  again_->setToolTip(tr("Draws the line that is marked under \"Figures\" again"));
  again_->setEnabled(false);
  anew_->setToolTip(tr("Begins with the first line; the results so far are kept as files"));
  return makeRow({
      {new QPushButton(tr("\u25C0 &Back")), "cmdBackToLines", [this] { emit backRequested(); }},
      {again_, "cmdDrawAgain",
       [this] {
         const QString label = figures_->item(figures_->currentRow(), 0)->text();
         if (const auto line = testLineOf(label.toStdString())) emit drawAgainRequested(*line);
       }},
      {anew_, "cmdMeasureAnew", [this] { emit measureAnewRequested(); }},
      {new QPushButton(tr("&Leave")), "cmdLeaveResult", [this] { emit leaveRequested(); }},
  });
}

QWidget* frmLinearityResult::makeExports() {
  const auto report = [this]() -> const LinearityReport& { return page_->report(); };
  return makeRow({
      {new QPushButton(tr("&PNG …")), "cmdExportPng",
       [this, report] { save("PNG", "png", linearityPng(report()).toStdString()); }},
      {new QPushButton(tr("PD&F …")), "cmdExportPdf",
       [this, report] { save("PDF", "pdf", linearityPdf(report()).toStdString()); }},
      {new QPushButton(tr("&CSV …")), "cmdExportCsv",
       [this, report] {
         save("CSV", "csv", csvText(report().results, report().panel, report().limits));
       }},
  });
}

void frmLinearityResult::showResults(std::vector<LineResult> results, const MeasuredPanel& panel) {
  saved_->hide();
  anew_->setEnabled(!results.empty());
  page_->showReport({std::move(results), panel, setup_.limits});
  fill();
}

void frmLinearityResult::limitsChanged() {
  setup_.limits = {centreLimit_->value(), edgeLimit_->value(),
                   unit_->currentIndex() == 0 ? LimitUnit::millimetres : LimitUnit::percent};
  LinearityReport report = page_->report();
  report.limits = setup_.limits;
  page_->showReport(std::move(report));
  fill();
}

void frmLinearityResult::fill() {
  const LinearityReport& report = page_->report();
  int failed = 0;
  figures_->setRowCount(static_cast<int>(report.results.size()));
  int row = 0;
  for (const LineResult& result : report.results) {
    const bool passed =
        judge(result.figures, report.limits, report.panel, result.guide.orientation).passed();
    failed += passed ? 0 : 1;
    int column = 0;
    const auto add = [&](const QString& text) {
      auto* const item = new QTableWidgetItem(text);
      if (!passed) item->setForeground(verdictColour(false, palette()));
      item->setTextAlignment(column < 2 ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
      figures_->setItem(row, column++, item);
    };
    add(shownText(result.label));
    add(passed ? tr("pass") : tr("FAIL"));
    for (const FigureColumn& figure : columns)
      add(shownNumber(figure.value(result.figures), 2));
    ++row;
  }
  verdict_->setText(report.results.empty() ? tr("Nothing is measured yet")
                    : failed == 0          ? tr("PASS")
                                           : tr("FAIL: %1 of %2").arg(failed).arg(row));
  QPalette colours = palette();
  colours.setColor(QPalette::WindowText, verdictColour(failed == 0, colours));
  verdict_->setPalette(colours);
}

void frmLinearityResult::save(const QString& kind, const QString& suffix,
                              const std::string& content) {
  QFileDialog dialog(window(), tr("Save as %1").arg(kind), shownText(folder_.string()),
                     QStringLiteral("%1 (*.%2)").arg(kind, suffix));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(suffix);
  dialog.selectFile("linearity." + suffix);
  if (dialog.exec() != QDialog::Accepted) return;
  const auto file = pathOf(dialog.selectedFiles().value(0));
  saved_->hide();
  if (const auto written = writeWholeFile(file, content); !written) {
    prompt_.message(written.error().describe());
    return;
  }
  saved_->show(Notice::success(tr("Saved in %1").arg(shownText(file.string())).toStdString()));
  saved_->setVisible(true);
}

}  // namespace touch
