#include "measure/windows/frmMeasureResult.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "measure/figures/line_figures.h"
#include "measure/files/measurement_file.h"
#include "measure/lines/lines_csv.h"
#include "measure/report/conditions.h"
#include "measure/report/words.h"
#include "measure/windows/frmFields.h"
#include "measure/windows/frmLimitsBox.h"
#include "measure/windows/frmLinesPage.h"
#include "measure/windows/frmVerdict.h"
#include "support/files/whole_file.h"
#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/controls/status_line.h"
#include "ui/controls/verdict_colour.h"
#include "ui/style/face_style.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch::measure {

namespace {

std::vector<const LineFigure*> tableColumns() {
  std::vector<const LineFigure*> columns;
  for (const LineFigure& figure : lineFigureList())
    if (figure.heading != nullptr) columns.push_back(&figure);
  return columns;
}

}  // namespace

frmMeasureResult::frmMeasureResult(Prompt& prompt, MeasureSetup& setup,
                                   std::filesystem::path folder, QWidget* parent)
    : QWidget(parent),
      prompt_(prompt),
      setup_(setup),
      folder_(std::move(folder)),
      figures_(new QTableWidget),
      page_(new frmLinesPage),
      width_(makePanelLength("correctedWidth", tr("Panel width"))),
      height_(makePanelLength("correctedHeight", tr("Panel height"))),
      source_(new QLabel),
      limits_(new frmLimitsBox(prompt, setup, folder_)),
      conditions_(new QLabel),
      verdict_(new frmVerdict),
      exports_(makeExports()),
      saved_(new StatusLine),
      again_(new QPushButton(tr("&Draw again"))),
      anew_(new QPushButton(tr("&Measure anew"))) {
  setObjectName("measureResult");
  QTabWidget& tabs = verdict_->pages();
  tabs.addTab(scrollable(page_), tr("Lines"));
  tabs.addTab(makeFigures(), tr("Line by line"));
  tabs.addTab(scrollable(makeConditions()), tr("Size and limits"));
  connect(verdict_, &frmVerdict::shown, this, &frmMeasureResult::fill);

  auto* const layout = new QVBoxLayout(this);
  const int margin = isSmallScreen() ? 2 : 6;
  layout->setContentsMargins(margin, 0, margin, margin);
  layout->setSpacing(isSmallScreen() ? 2 : 6);
  saved_->hide();
  layout->addWidget(verdict_, 1);
  layout->addWidget(saved_);
  if (isSmallScreen()) {
    // On a page of its own it leaves room for the others.
    tabs.addTab(exports_, tr("Export"));
  } else {
    layout->addWidget(exports_);
  }
  layout->addWidget(makeWays());
  // Whoever goes on by the keyboard meets it last.
  setTabOrder(anew_, findChild<QWidget*>("cmdLeaveResult"));
}

void frmMeasureResult::leadOn() {
  setKind(*findChild<QPushButton*>("cmdLeaveResult"), ButtonKind::primary);
}

void frmMeasureResult::takeFocus() {
  verdict_->takeFocus();
}

QWidget* frmMeasureResult::makeFigures() {
  figures_->setObjectName("figuresTable");
  figures_->setAccessibleName(tr("Figures of each line in millimetres"));
  figures_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  constexpr int narrowest = 56;
  figures_->horizontalHeader()->setMinimumSectionSize(narrowest);
  figures_->horizontalHeader()->setHighlightSections(false);
  figures_->verticalHeader()->hide();
  figures_->verticalHeader()->setDefaultSectionSize(fingerSize());
  figures_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  figures_->setSelectionBehavior(QAbstractItemView::SelectRows);
  figures_->setSelectionMode(QAbstractItemView::SingleSelection);
  figures_->setTabKeyNavigation(false);
  figures_->setMinimumHeight(2 * fingerSize());
  return figures_;
}

QWidget* frmMeasureResult::makeConditions() {
  auto* const box = new QWidget;
  auto* const form = new QFormLayout(box);
  addField(*form, tr("&Width:"), width_, &width_->box());
  addField(*form, tr("&Height:"), height_, &height_->box());
  source_->setObjectName("judgedSize");
  source_->setWordWrap(true);
  auto* const judge = new QPushButton(tr("&Judge again"));
  judge->setObjectName("cmdJudgeAgain");
  judge->setToolTip(tr("Judges everything with this size"));
  judge->setAutoDefault(true);
  makeFingerSized(*judge);
  connect(judge, &QPushButton::clicked, this, [this] {
    measurement_.size = {{width_->value()}, {height_->value()}, SizeSource::user};
    // A saved measurement may be of another panel than the one that is here.
    if (!isStored_) setup_.size = measurement_.size;
    judgeAgain();
    emit sizeCorrected(measurement_.size);
  });
  form->addRow(source_, judge);
  addField(*form, tr("L&imits:"), limits_, limits_);
  connect(limits_, &frmLimitsBox::limitsChanged, this, [this] {
    measurement_.limits = setup_.limits;
    judgeAgain();
    emit limitsChanged();
  });
  conditions_->setObjectName("conditions");
  conditions_->setWordWrap(true);
  form->addRow(conditions_);
  return box;
}

QWidget* frmMeasureResult::makeRow(std::initializer_list<RowButton> buttons) {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  for (const auto& [button, name, action] : buttons) {
    button->setObjectName(name);
    button->setAutoDefault(true);
    makeFingerSized(*button);
    row->addWidget(button, 1);
    connect(button, &QPushButton::clicked, this, action);
  }
  return box;
}

QWidget* frmMeasureResult::makeWays() {
  again_->setToolTip(tr("Draws the line that is marked under \"Line by line\" again"));
  anew_->setToolTip(tr("Begins with the first test; single lines are kept as files"));
  return makeRow({
      // Far from where the steps of a commissioning have "Start".
      {new QPushButton(tr("&Leave")), "cmdLeaveResult", [this] { emit leaveRequested(); }},
      {new QPushButton(tr("\u25C0 &Back")), "cmdBackToLines", [this] { emit backRequested(); }},
      {again_, "cmdDrawAgain",
       [this] {
         const auto row = static_cast<std::size_t>(figures_->currentRow());
         emit drawAgainRequested(*report().analysis.lines.at(row).guide);
       }},
      {anew_, "cmdMeasureAnew", [this] { emit measureAnewRequested(); }},
  });
}

QWidget* frmMeasureResult::makeExports() {
  return makeRow({
      {new QPushButton(tr("&Save …")), "cmdSave",
       [this] {
         const auto content =
             measurementText(report().measurement,
                             jsonOf(report().measurement, report().analysis, report().verdict));
         if (save("JSON", "json", content)) isSaved_ = true;
       }},
      {new QPushButton(tr("&PNG …")), "cmdExportPng",
       [this] { save("PNG", "png", measurementPng(report()).toStdString()); }},
      {new QPushButton(tr("PD&F …")), "cmdExportPdf",
       [this] { save("PDF", "pdf", measurementPdf(report()).toStdString()); }},
      {new QPushButton(tr("&CSV …")), "cmdExportCsv",
       [this] {
         save("CSV", "csv", linesCsv(report().measurement, report().analysis, report().verdict));
       }},
  });
}

// Nothing that needs it can be pressed before it is there.
const Report& frmMeasureResult::report() const {
  return *verdict_->report();
}

void frmMeasureResult::showResults(Measurement measurement, bool isStored) {
  saved_->hide();
  measurement_ = std::move(measurement);
  isStored_ = isStored;
  // Drawing needs the panel that was measured, and its files.
  again_->setVisible(!isStored);
  anew_->setVisible(!isStored);
  anew_->setEnabled(!measurement_.traces.empty());
  judgeAgain();
  isSaved_ = isStored;
}

void frmMeasureResult::judgeAgain() {
  isSaved_ = false;
  again_->setEnabled(false);
  exports_->setEnabled(false);
  verdict_->showMeasurement(measurement_);
}

void frmMeasureResult::fill() {
  const PanelSize& size = measurement_.size;
  {
    const QSignalBlocker quietWidth(&width_->box());
    const QSignalBlocker quietHeight(&height_->box());
    width_->box().setValue(size.width.value);
    height_->box().setValue(size.height.value);
  }
  source_->setText(tr("Active area: %1").arg(shownText(panelText(size))));
  limits_->showLimits(measurement_.limits);
  QString conditions;
  for (const Condition& condition : conditionsOf(measurement_))
    conditions +=
        QStringLiteral("%1: %2\n").arg(shownText(condition.caption), shownText(condition.text));
  conditions_->setText(conditions.trimmed());
  exports_->setEnabled(true);
  page_->showReport(report());
  fillFigures();
}

void frmMeasureResult::fillFigures() {
  const auto columns = tableColumns();
  const PanelSize& size = measurement_.size;
  again_->setEnabled(false);
  figures_->disconnect(this);
  figures_->clear();
  figures_->setColumnCount(static_cast<int>(columns.size()) + 2);
  figures_->setRowCount(static_cast<int>(report().analysis.lines.size()));
  QStringList headings{tr("Line"), tr("Verdict")};
  for (const LineFigure* const column : columns)
    headings << (spokenText("measure", column->heading) + '\n' +
                 shownText(unitText(size, column->unit)).trimmed());
  figures_->setHorizontalHeaderLabels(headings);
  for (std::size_t i = 0; i < columns.size(); ++i)
    figures_->horizontalHeaderItem(static_cast<int>(i) + 2)
        ->setToolTip(spokenText("measure", columns[i]->caption));

  int row = 0;
  for (const LineFigures& line : report().analysis.lines) {
    const Subject& subject = *report().verdict.find(line.guide->name);
    int column = 0;
    const auto add = [&](const QString& text, Outcome outcome, const QString& hint) {
      auto* const item = new QTableWidgetItem(text);
      if (outcome == Outcome::fail) item->setForeground(verdictColour(false, palette()));
      QFont bold = figures_->font();
      bold.setBold(outcome != Outcome::pass);
      item->setFont(bold);
      item->setToolTip(hint);
      item->setTextAlignment(column < 2 ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
      figures_->setItem(row, column++, item);
    };
    QStringList evidence;
    for (const Check& check : subject.checks)
      evidence << QStringLiteral("%1   %2").arg(wordOf(check.outcome),
                                                shownText(textOf(check, size)));
    for (const std::string& remark : subject.remarks)
      evidence << shownText(remark);
    add(shownText(subject.name), Outcome::pass, evidence.join('\n'));
    add(wordOf(subject.outcome()), subject.outcome(), evidence.join('\n'));
    for (const LineFigure* const figure : columns) {
      const auto value = figure->value(line);
      const auto check = std::ranges::find(subject.checks, figure->name, &Check::name);
      const bool isJudged = check != subject.checks.end();
      add(value ? shownNumber(*value, figure->decimals) : QStringLiteral("–"),
          isJudged ? check->outcome : Outcome::pass,
          isJudged ? shownText(textOf(*check, size)) : QString());
    }
    ++row;
  }
  connect(figures_, &QTableWidget::currentCellChanged, this,
          [this](int current) { again_->setEnabled(current >= 0); });
}

bool frmMeasureResult::save(const QString& kind, const QString& suffix,
                            const std::string& content) {
  const auto file =
      askFileToSave(window(), tr("Save as %1").arg(kind), folder_ / pathOf("measurement." + suffix),
                    QStringLiteral("%1 (*.%2)").arg(kind, suffix), suffix);
  if (!file) return false;
  saved_->hide();
  if (const auto written = writeWholeFile(*file, content); !written) {
    prompt_.message(written.error().describe());
    return false;
  }
  saved_->show(Notice::success(tr("Saved in %1").arg(shownText(file->string())).toStdString()));
  saved_->setVisible(true);
  return true;
}

}  // namespace touch::measure
