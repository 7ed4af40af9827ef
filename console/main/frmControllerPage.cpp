#include "console/main/frmControllerPage.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "console/main/main_console.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/text.h"

namespace touch {

namespace {

/// A press beside its rows is no choice.
class RowTable final : public QTableWidget {
 public:
  using QTableWidget::QTableWidget;

 protected:
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override {
    return index.isValid() ? QTableWidget::selectionCommand(index, event)
                           : QItemSelectionModel::NoUpdate;
  }
};

QLabel* makeValueLabel(const char* name) {
  auto* const label = new QLabel("—");
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QString orDash(const std::string& text) {
  return text.empty() ? "—" : shownText(text);
}

}  // namespace

frmControllerPage::frmControllerPage(MainModel& model, MainConsole& console)
    : model_(model),
      controllerList_(new RowTable(0, 2)),
      emptyHint_(
          new QLabel(tr("No controller is listed. Check that the touch driver is installed and the "
                        "controller is connected and powered, then press Refresh. The page "
                        "\"Doctor\" says what is missing."))),
      unitType_(makeValueLabel("lblUnitType")),
      firmware_(makeValueLabel("lblFirmware")),
      infoList_(new QListWidget),
      info_(new QPushButton(tr("&Info"))),
      actions_(makeActions(console)) {
  setHelpChapter(*this, "Controller");
  setUpList(console);
  emptyHint_->setWordWrap(true);
  emptyHint_->hide();

  infoList_->setObjectName("infoList");
  infoList_->setAccessibleName(tr("Controller information"));
  infoList_->setMinimumHeight(2 * fingerSize());

  auto* const identity = new QFormLayout;
  identity->addRow(tr("Unit type:"), unitType_);
  identity->addRow(tr("Firmware:"), firmware_);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(controllerList_, 3);
  layout->addWidget(emptyHint_);
  layout->addLayout(identity);
  layout->addWidget(infoList_, 2);

  model.watch([this](Part part) {
    if (part == Part::controllers) showControllers();
    if (part == Part::identity) showIdentity();
    if (part == Part::information) showInformation();
  });
}

void frmControllerPage::setUpList(MainConsole& console) {
  controllerList_->setObjectName("controllerList");
  setFocusProxy(controllerList_);
  controllerList_->setAccessibleName(tr("Controllers"));
  controllerList_->setHorizontalHeaderLabels({tr(" No"), tr(" Device")});
  controllerList_->verticalHeader()->hide();
  controllerList_->verticalHeader()->setDefaultSectionSize(fingerSize());
  controllerList_->horizontalHeader()->setStretchLastSection(true);
  controllerList_->horizontalHeader()->setHighlightSections(false);
  controllerList_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  controllerList_->setColumnWidth(0, 64);
  controllerList_->setSelectionBehavior(QAbstractItemView::SelectRows);
  controllerList_->setSelectionMode(QAbstractItemView::SingleSelection);
  controllerList_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  controllerList_->setTabKeyNavigation(false);
  controllerList_->setMinimumHeight(2 * fingerSize());
  connect(controllerList_, &QTableWidget::currentCellChanged, this, [&console](int row) {
    if (row >= 0) console.selectController(static_cast<std::size_t>(row));
  });
}

QWidget* frmControllerPage::makeActions(MainConsole& console) {
  auto* const box = new QWidget;
  auto* const refresh = new QPushButton(tr("&Refresh"));
  refresh->setObjectName("cmdRefresh");
  refresh->setToolTip(tr("Search for controllers again (F5)"));
  info_->setObjectName("cmdInfo");
  auto* const search = new QPushButton(tr("Search &COM ports"));
  search->setObjectName("cmdSearch");
  search->setToolTip(tr("Look for a serial controller on COM16 down to COM1"));

  auto* const buttons = new QHBoxLayout(box);
  buttons->addWidget(refresh);
  buttons->addWidget(info_);
  buttons->addWidget(search);
  buttons->addStretch();
  connect(refresh, &QPushButton::clicked, this, [&console] { console.refresh(); });
  connect(info_, &QPushButton::clicked, this, [&console] { console.information(); });
  connect(search, &QPushButton::clicked, this, [this, &console] {
    console.searchComPorts();
    setFocus();
  });
  return box;
}

void frmControllerPage::showControllers() {
  const auto& names = model_.controllers;
  const QSignalBlocker silent(controllerList_);
  controllerList_->setRowCount(static_cast<int>(names.size()));
  for (int row = 0; row < controllerList_->rowCount(); ++row) {
    controllerList_->setItem(row, 0, new QTableWidgetItem(QString::number(row + 1)));
    controllerList_->setItem(row, 1,
                             new QTableWidgetItem(shownText(names[static_cast<std::size_t>(row)])));
  }
  controllerList_->setCurrentCell(model_.selected ? static_cast<int>(*model_.selected) : -1, 0);
  emptyHint_->setVisible(names.empty());
  info_->setEnabled(model_.selected.has_value());
}

void frmControllerPage::showIdentity() {
  const Identity& identity = model_.identity;
  const std::string model = modelName(identity.unitType);
  unitType_->setText(orDash(identity.unitType) +
                     (model.empty() ? QString() : " (" + shownText(model) + ')'));
  firmware_->setText(orDash(identity.firmware));
}

void frmControllerPage::showInformation() {
  infoList_->clear();
  for (const std::string& line : model_.information)
    infoList_->addItem(shownText(line));
}

}  // namespace touch
