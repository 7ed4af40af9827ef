#include "console/parameters/frmParametersPage.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>
#include <functional>
#include <optional>

#include "console/actions/actions.h"
#include "console/parameters/vrq_file.h"
#include "support/text/hex.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/colours.h"
#include "ui/style/signs.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

enum Column { address, oldHigh, oldLow, newHigh, newLow, changed, columns };

constexpr int rowHeight = 32;

WordByte byteOf(int column) {
  return column == newHigh ? WordByte::high : WordByte::low;
}

/// How a cell differs from what the controller holds.
enum class Mark { none, word, before, after, rejected };
constexpr int markRole = Qt::UserRole + 1;

/// A word that is changed stands out; in it the byte that differs, the old one struck out.
class MarkedCells final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const auto mark = static_cast<Mark>(index.data(markRole).toInt());
    if (mark == Mark::none) return;
    const Colours& colours = coloursOf(option->palette);
    const bool isRejected = mark == Mark::rejected;
    option->backgroundBrush = isRejected ? colours.problemSoft : colours.remarkSoft;
    const QColor& ink = isRejected           ? colours.problem
                        : mark == Mark::word ? colours.text
                                             : colours.remark;
    option->palette.setColor(QPalette::Text, ink);
    option->font.setBold(mark == Mark::after || isRejected);
    option->font.setStrikeOut(mark == Mark::before);
  }
};

}  // namespace

frmParametersPage::frmParametersPage(MainModel& model, Actions& actions, ParameterEditor& editor,
                                     std::filesystem::path workFolder)
    : commands_(actions),
      editor_(editor),
      workFolder_(std::move(workFolder)),
      table_(new QTableWidget(static_cast<int>(ParameterTable::rows), columns)),
      undo_(new QPushButton(tr("U&ndo"))),
      actions_(makeActions()) {
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
  table_->setItemDelegate(new MarkedCells(table_));
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
  layout->addWidget(makeFileButtons());
  layout->addStretch();
  connect(table_, &QTableWidget::cellChanged, this, &frmParametersPage::edited);
  fill();
  model.watch([this, &model](Part part) {
    if (part == Part::parameters) fill();
    if (part != Part::controllers) return;
    setEnabled(model.selected.has_value());
    actions_->setEnabled(model.selected.has_value());
  });
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

struct frmParametersPage::Action {
  QPushButton* button;
  const char* name;
  std::function<void()> action;
  std::optional<Sign> sign{};
};

QWidget* frmParametersPage::makeButtons(std::initializer_list<Action> actions) {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  for (const auto& [button, name, action, sign] : actions) {
    button->setObjectName(name);
    if (sign) giveSign(*button, *sign);
    row->addWidget(button, 1);
    connect(button, &QPushButton::clicked, this, action);
  }
  return box;
}

QWidget* frmParametersPage::makeFileButtons() {
  return makeButtons({
      {new QPushButton(tr("&Clear")), "cmdClearParameters",
       [this] {
         editor_.table().clear();
         fill();
         commands_.tell(tr("The new values are cleared; nothing was sent.").toStdString());
       }},
      {new QPushButton(tr("L&oad …")), "cmdLoadParameters", [this] { load(); }, Sign::load},
      {new QPushButton(tr("&Save …")), "cmdSaveParameters", [this] { save(); }, Sign::save},
      {new QPushButton(tr("Com&pare …")), "cmdCompareParameters", [this] { compare(); }},
  });
}

QWidget* frmParametersPage::makeActions() {
  // Each says what is being waited for meanwhile.
  const auto perform = [this](const QString& what, Notice (ParameterEditor::*action)()) {
    const std::function<Notice()> step = std::bind_front(action, &editor_);
    return [this, what, step] { commands_.perform(what.toStdString(), step); };
  };
  return makeButtons({
      {new QPushButton(tr("&Read")), "cmdReadParameters",
       perform(tr("Reading the parameters …"), &ParameterEditor::read)},
      {new QPushButton(tr("&Write")), "cmdWriteParameters",
       perform(tr("Writing the parameters …"), &ParameterEditor::write)},
      {undo_, "cmdUndoParameters",
       perform(tr("Writing the parameters back …"), &ParameterEditor::undo), Sign::undo},
  });
}

void frmParametersPage::fill() {
  const QSignalBlocker silent(table_);
  const ParameterTable& table = editor_.table();
  for (int row = 0; row < table_->rowCount(); ++row) {
    const auto word = static_cast<std::size_t>(row);
    const bool isChanged = table.changed(word);
    table_->item(row, oldHigh)->setText(shownText(table.oldText(word, WordByte::high)));
    table_->item(row, oldLow)->setText(shownText(table.oldText(word, WordByte::low)));
    const bool isRejected =
        table.isRejected(word, WordByte::high) || table.isRejected(word, WordByte::low);
    table_->item(row, changed)
        ->setText(isRejected ? tr("invalid") : (isChanged ? tr("changed") : QString()));
    const Mark ofWord = isChanged || isRejected ? Mark::word : Mark::none;
    table_->item(row, address)->setData(markRole, static_cast<int>(ofWord));
    table_->item(row, changed)
        ->setData(markRole, static_cast<int>(isRejected  ? Mark::rejected
                                             : isChanged ? Mark::after
                                                         : Mark::none));
    fillByte(row, newHigh);
    fillByte(row, newLow);
  }
  undo_->setEnabled(editor_.canUndo());
}

void frmParametersPage::fillByte(int row, int column) {
  const auto word = static_cast<std::size_t>(row);
  const WordByte byte = byteOf(column);
  const ParameterTable& table = editor_.table();
  const bool isWordMarked = table.changed(word) || table.isRejected(word, WordByte::high) ||
                            table.isRejected(word, WordByte::low);
  const bool differs = table.oldText(word, byte) != table.newText(word, byte);
  const auto mark = [&](Mark ofByte) {
    return static_cast<int>(!isWordMarked ? Mark::none : differs ? ofByte : Mark::word);
  };
  QTableWidgetItem& item = *table_->item(row, column);
  item.setText(shownText(table.newText(word, byte)));
  item.setData(markRole, mark(table.isRejected(word, byte) ? Mark::rejected : Mark::after));
  table_->item(row, byte == WordByte::high ? oldHigh : oldLow)
      ->setData(markRole, mark(Mark::before));
}

void frmParametersPage::edited(int row, int column) {
  const WordByte byte = byteOf(column);
  const auto edited = editor_.table().edit(static_cast<std::size_t>(row), byte,
                                           table_->item(row, column)->text().toStdString());
  fill();
  commands_.tell(edited ? Notice() : Notice::error(edited.error()));
}

void frmParametersPage::load() {
  const auto file = askFileToOpen(this, tr("Load parameters"), workFolder_, tr("Cal (*.vrq)"));
  if (!file) return;
  const Notice outcome = editor_.load(*file);
  fill();
  commands_.tell(outcome);
}

void frmParametersPage::compare() {
  const auto file = askFileToOpen(this, tr("Compare with a file"), workFolder_, tr("Cal (*.vrq)"));
  if (file) commands_.tell(editor_.compare(*file));
}

void frmParametersPage::save() {
  // No name is asked for what cannot be saved.
  if (const auto block = editor_.table().block(); !block) {
    commands_.tell(Notice::error(block.error()));
    return;
  }
  const auto file =
      askFileToSave(this, tr("Save parameters"), workFolder_ / "", tr("Cal (*.vrq)"), "vrq");
  if (file) commands_.tell(editor_.save(*file));
}

}  // namespace touch
