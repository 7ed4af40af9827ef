#include "console/main/frmControllerPage.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "console/main/main_console.h"
#include "ui/controls/card_rows.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/guide/help.h"
#include "ui/style/signs.h"
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

/// What a controller is known for.
CardDetails detailsOf(const std::string& name, const Heard& heard) {
  const bool isSerial = isSerialController(name);
  CardDetails details{
      .sign = isSerial ? Sign::serial : Sign::usb,
      .line = isSerial ? frmControllerPage::tr("Serial") : frmControllerPage::tr("USB"),
      .state = {}};
  if (!heard.identity.firmware.empty()) {
    details.line = frmControllerPage::tr("%1, firmware %2")
                       .arg(details.line, shownText(heard.identity.firmware));
  }
  switch (heard.answer) {
    case Heard::Answer::given:
      details.state = {CardState::Kind::good, frmControllerPage::tr("answers")};
      break;
    case Heard::Answer::none:
      details.state = {CardState::Kind::remark, frmControllerPage::tr("does not answer")};
      break;
    case Heard::Answer::notAsked:
      details.state = {CardState::Kind::unknown, frmControllerPage::tr("not asked yet")};
      break;
  }
  return details;
}

}  // namespace

frmControllerPage::frmControllerPage(MainModel& model, MainConsole& console)
    : model_(model),
      controllerList_(new RowTable(0, 2)),
      emptyHint_(
          new QLabel(tr("No controller is listed. Check that the touch driver is installed and the "
                        "controller is connected and powered, then press Refresh. The page "
                        "\"Doctor\" says what is missing."))),
      emptyDrawing_(new QLabel),
      chosen_(new QLabel),
      unitType_(makeValueLabel("lblUnitType")),
      firmware_(makeValueLabel("lblFirmware")),
      infoList_(new QListWidget),
      info_(new QPushButton(tr("&Info"))),
      actions_(makeActions(console)) {
  setHelpChapter(*this, "Controller");
  setUpList(console);
  emptyHint_->setWordWrap(true);
  for (QLabel* const shown : {emptyHint_, emptyDrawing_})
    shown->hide();

  infoList_->setObjectName("infoList");
  infoList_->setAccessibleName(tr("Controller information"));
  infoList_->setMinimumHeight(2 * fingerSize());

  auto* const found = new QVBoxLayout;
  found->addWidget(controllerList_, 1);
  found->addWidget(emptyHint_);
  found->addWidget(emptyDrawing_);
  halves_ = new QBoxLayout(QBoxLayout::LeftToRight);
  halves_->addLayout(found, 1);
  halves_->addWidget(makeDetails(), 1);
  rows_ = new QVBoxLayout(this);
  rows_->addLayout(halves_, 1);

  model.watch([this](Part part) {
    if (part == Part::controllers) showControllers();
    if (part == Part::identity) {
      showIdentity();
      describeControllers();
    }
    if (part == Part::information) showInformation();
  });
}

QWidget* frmControllerPage::makeDetails() {
  chosen_->setObjectName("lblController");
  chosen_->setWordWrap(true);
  QFont large = resized(chosen_->font(), 1.25);
  large.setBold(true);
  chosen_->setFont(large);
  // What the card of the list says in bold needs no second line where there is none to spare.
  if (isSmallScreen()) chosen_->hide();
  auto* const identity = new QFormLayout;
  identity->addRow(tr("Unit type:"), unitType_);
  identity->addRow(tr("Firmware:"), firmware_);
  auto* const card = new QGroupBox;
  auto* const column = new QVBoxLayout(card);
  column->addWidget(chosen_);
  column->addLayout(identity);
  column->addWidget(infoList_, 1);
  return card;
}

void frmControllerPage::greet(std::function<void(frmGreeting::Choice)> choose) {
  greeting_ = new frmGreeting([this, choose = std::move(choose)](frmGreeting::Choice choice) {
    if (greeting_->isHidden()) return;
    greeting_->hide();
    greeting_->deleteLater();
    setFocus();
    choose(choice);
  });
  QWidget* before = controllerList_->previousInFocusChain();
  rows_->insertWidget(0, greeting_);
  // A layout shows what is put into it later, and the search of the start may come first.
  greeting_->show();
  for (auto* const button : greeting_->findChildren<QPushButton*>()) {
    setTabOrder(before, button);
    before = button;
  }
}

QSize frmControllerPage::minimumSizeHint() const {
  // One half below the other is always possible.
  int widest = std::max(halves_->itemAt(0)->minimumSize().width(),
                        halves_->itemAt(1)->minimumSize().width());
  if (greeting_ && !greeting_->isHidden())
    widest = std::max(widest, greeting_->minimumSizeHint().width());
  const QMargins around = rows_->contentsMargins();
  return {widest + around.left() + around.right(), QWidget::minimumSizeHint().height()};
}

void frmControllerPage::resizeEvent(QResizeEvent* event) {
  constexpr int roomForTwo = 560;
  halves_->setDirection(event->size().width() < roomForTwo ? QBoxLayout::TopToBottom
                                                           : QBoxLayout::LeftToRight);
}

void frmControllerPage::setUpList(MainConsole& console) {
  controllerList_->setObjectName("controllerList");
  setFocusProxy(controllerList_);
  controllerList_->setAccessibleName(tr("Controllers"));
  controllerList_->setHorizontalHeaderLabels({tr(" No"), tr(" Device")});
  controllerList_->verticalHeader()->hide();
  CardRows::giveTo(*controllerList_);
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
  giveSign(*refresh, Sign::refresh);
  info_->setObjectName("cmdInfo");
  giveSign(*info_, Sign::information);
  auto* const search = new QPushButton(tr("Search &COM ports"));
  search->setObjectName("cmdSearch");
  giveSign(*search, Sign::search);
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
  describeControllers();
  controllerList_->setCurrentCell(model_.selected ? static_cast<int>(*model_.selected) : -1, 0);
  emptyHint_->setVisible(names.empty());
  const bool isDrawingShown = names.empty() && !isSmallScreen();
  // Read only when it is shown, which on most machines is never.
  if (isDrawingShown && emptyDrawing_->pixmap().isNull())
    showDrawing(*emptyDrawing_, "connector", tr("What is connected to what"),
                tr("The panel's tail is plugged into the controller, the controller into the "
                   "computer, and it has power."));
  emptyDrawing_->setVisible(isDrawingShown);
  info_->setEnabled(model_.selected.has_value());
}

void frmControllerPage::describeControllers() {
  for (std::size_t i = 0; i < model_.controllers.size(); ++i) {
    const Heard& heard = i < model_.heard.size() ? model_.heard[i] : Heard();
    CardRows::describe(*controllerList_->item(static_cast<int>(i), 1),
                       detailsOf(model_.controllers[i], heard));
  }
  chosen_->setText(model_.selected ? shownText(model_.selectedName()) : "—");
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
