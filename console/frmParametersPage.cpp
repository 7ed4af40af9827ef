#include "console/frmParametersPage.h"

#include <QButtonGroup>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "console/vrq_file.h"
#include "core/hex.h"
#include "ui/finger_style.h"
#include "ui/help.h"
#include "ui/text.h"

namespace touch {

namespace {

enum Column { address, oldHigh, oldLow, newHigh, newLow, changed, columns };

constexpr int rowHeight = 32;

}  // namespace

frmParametersPage::frmParametersPage(ParameterEditor& editor, std::filesystem::path workFolder,
                                     QWidget* parent)
    : QWidget(parent),
      editor_(editor),
      workFolder_(std::move(workFolder)),
      table_(new QTableWidget(static_cast<int>(ParameterTable::rows), columns)),
      undo_(new QPushButton(tr("&Undo"))) {
  setHelpChapter(*this, "Parameters");
  table_->setObjectName("parameterTable");
  table_->setAccessibleName(tr("Parameter words"));
  table_->setHorizontalHeaderLabels(
      {tr("Address"), tr("Old high"), tr("Old low"), tr("New high"), tr("New low"), tr("Changed")});
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(rowHeight);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->horizontalHeader()->setMinimumSectionSize(40);
  table_->horizontalHeader()->setHighlightSections(false);
  if (isSmallScreen()) table_->horizontalHeader()->setFont(resized(font(), 0.9));
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setMinimumHeight(static_cast<int>(ParameterTable::rows) * rowHeight +
                           table_->horizontalHeader()->sizeHint().height() + 4);
  table_->setTabKeyNavigation(false);
  for (int row = 0; row < table_->rowCount(); ++row) {
    for (int column = 0; column < columns; ++column) {
      auto* const item = new QTableWidgetItem;
      item->setTextAlignment(Qt::AlignCenter);
      const bool editable = column == newHigh || column == newLow;
      item->setFlags(editable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable
                              : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
      table_->setItem(row, column, item);
    }
    table_->item(row, address)->setText(shownText(hexByte(static_cast<std::uint8_t>(row))));
  }
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(makeBaseSwitch());
  layout->addWidget(table_);
  layout->addWidget(makeButtons());
  layout->addStretch();
  connect(table_, &QTableWidget::cellChanged, this, &frmParametersPage::edited);
  fill();
}

QWidget* frmParametersPage::makeBaseSwitch() {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new QLabel(tr("Bytes in")));
  const std::pair<const char*, QString> bases[] = {{"optionHexadecimal", tr("hexa&decimal")},
                                                   {"optionDecimal", tr("deci&mal")}};
  for (const auto& [name, caption] : bases) {
    auto* const option = new QRadioButton(caption);
    option->setObjectName(name);
    const bool decimal = row->count() > 1;
    option->setChecked(!decimal);
    row->addWidget(option);
    connect(option, &QRadioButton::toggled, this, [this, decimal](bool on) {
      if (!on) return;
      editor_.table().setBase(decimal ? NumberBase::decimal : NumberBase::hexadecimal);
      fill();
    });
  }
  row->addStretch();
  return box;
}

QWidget* frmParametersPage::makeButtons() {
  auto* const box = new QWidget;
  auto* const grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  const struct {
    QPushButton* button;
    const char* name;
    std::function<void()> action;
  } buttons[] = {
      {new QPushButton(tr("&Read")), "cmdReadParameters", [this] { emit readRequested(); }},
      {new QPushButton(tr("&Write")), "cmdWriteParameters", [this] { emit writeRequested(); }},
      {undo_, "cmdUndoParameters", [this] { emit undoRequested(); }},
      {new QPushButton(tr("&Clear")), "cmdClearParameters",
       [this] {
         editor_.table().clear();
         fill();
         emit statusChanged(tr("The new values are cleared; nothing was sent."));
       }},
      {new QPushButton(tr("L&oad …")), "cmdLoadParameters", [this] { load(); }},
      {new QPushButton(tr("&Save …")), "cmdSaveParameters", [this] { save(); }},
      {new QPushButton(tr("Com&pare …")), "cmdCompareParameters", [this] { compare(); }},
  };
  const int perRow = isSmallScreen() ? 3 : 4;
  int place = 0;
  for (const auto& [button, name, action] : buttons) {
    button->setObjectName(name);
    grid->addWidget(button, place / perRow, place % perRow);
    ++place;
    connect(button, &QPushButton::clicked, this, action);
  }
  return box;
}

void frmParametersPage::fill() {
  const QSignalBlocker silent(table_);
  const ParameterTable& table = editor_.table();
  for (int row = 0; row < table_->rowCount(); ++row) {
    const auto word = static_cast<std::size_t>(row);
    const bool isChanged = table.changed(word);
    table_->item(row, oldHigh)->setText(shownText(table.oldText(word, WordByte::high)));
    table_->item(row, oldLow)->setText(shownText(table.oldText(word, WordByte::low)));
    table_->item(row, newHigh)->setText(shownText(table.newText(word, WordByte::high)));
    table_->item(row, newLow)->setText(shownText(table.newText(word, WordByte::low)));
    table_->item(row, changed)->setText(isChanged ? tr("changed") : QString());
    QFont font = table_->font();
    font.setBold(isChanged);
    for (const int column : {newHigh, newLow, changed})
      table_->item(row, column)->setFont(font);
  }
  undo_->setEnabled(editor_.canUndo());
}

void frmParametersPage::edited(int row, int column) {
  const auto byte = column == newHigh ? WordByte::high : WordByte::low;
  const auto complaint = editor_.table().edit(static_cast<std::size_t>(row), byte,
                                              table_->item(row, column)->text().toStdString());
  fill();
  emit statusChanged(complaint ? shownText(*complaint) : QString());
}

QString frmParametersPage::chooseFile(const QString& title) {
  return QFileDialog::getOpenFileName(this, title, shownText(workFolder_.string()),
                                      tr("Cal (*.vrq)"));
}

void frmParametersPage::load() {
  const QString file = chooseFile(tr("Load parameters"));
  if (file.isEmpty()) return;
  const Status outcome = editor_.load(pathOf(file));
  fill();
  emit statusChanged(shownText(outcome.text));
}

void frmParametersPage::compare() {
  const QString file = chooseFile(tr("Compare with a file"));
  if (!file.isEmpty()) emit statusChanged(shownText(editor_.compare(pathOf(file)).text));
}

void frmParametersPage::save() {
  QFileDialog dialog(this, tr("Save parameters"), shownText(workFolder_.string()),
                     tr("Cal (*.vrq)"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  // The dialog itself completes the name, so that it asks before it replaces the file that is meant.
  dialog.setDefaultSuffix("vrq");
  if (dialog.exec() != QDialog::Accepted) return;
  emit statusChanged(shownText(editor_.save(pathOf(dialog.selectedFiles().front())).text));
}

}  // namespace touch
