#include "measure/windows/frmMeasureStart.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "measure/report/conditions.h"
#include "measure/windows/frmFields.h"
#include "measure/windows/frmLimitsBox.h"
#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/style/face_style.h"
#include "ui/text.h"

namespace touch::measure {

namespace {

constexpr int fewTargets = 9;
constexpr int manyTargets = 25;

}  // namespace

frmMeasureStart::frmMeasureStart(Prompt& prompt, MeasureSetup& setup, std::filesystem::path folder,
                                 const std::vector<PortChoice>& ports, QWidget* parent)
    : QWidget(parent),
      setup_(setup),
      folder_(std::move(folder)),
      width_(makePanelLength("panelWidth", tr("Panel width"))),
      height_(makePanelLength("panelHeight", tr("Panel height"))),
      source_(new QLabel),
      limits_(new frmLimitsBox(prompt, setup, folder_)) {
  setObjectName("measureStart");
  auto* const content = new QWidget;
  auto* const columns =
      new QBoxLayout(isSmallScreen() ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, content);
  columns->addWidget(makePanel(ports), 1, Qt::AlignTop);
  columns->addWidget(makeTests(), 1, Qt::AlignTop);

  auto* const page = new ScrolledPage;
  page->put(content, makeButtons());
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(page);

  for (FingerSpinBox* const length : {width_, height_})
    connect(&length->box(), &QDoubleSpinBox::valueChanged, this, [this, length] {
      // Enter says that a value has changed, too, when it has not; the boxes show tenths.
      constexpr double asShown = 0.051;
      if (std::abs(width_->value() - size_.width.value) < asShown &&
          std::abs(height_->value() - size_.height.value) < asShown)
        return;
      entered_.insert(length);
      // A guess that stands beside what was entered is still one.
      const bool isGuess = size_.source == SizeSource::nominal && entered_.size() < 2;
      size_ = {
          {width_->value()}, {height_->value()}, isGuess ? SizeSource::nominal : SizeSource::user};
      setup_.size = size_;
      showSize();
    });
}

QWidget* frmMeasureStart::makePorts(const std::vector<PortChoice>& ports) {
  auto* const from = new QComboBox;
  from->setObjectName("touchesFrom");
  from->setToolTip(
      tr("The controller's own reports are finer than the pointer, and have times of "
         "their own. While they are read the pointer does not follow the finger."));
  makeFingerSized(*from);
  from->addItem(tr("The pointer"));
  for (const PortChoice& port : ports) {
    from->addItem(tr("Reports on %1").arg(shownText(port.caption)), port.number);
    if (setup_.reportPort == port.number) from->setCurrentIndex(from->count() - 1);
  }
  if (from->currentIndex() == 0) setup_.reportPort.reset();
  connect(from, &QComboBox::currentIndexChanged, this, [this, from](int index) {
    setup_.reportPort = index == 0 ? std::nullopt : std::optional(from->itemData(index).toInt());
  });
  return from;
}

QWidget* frmMeasureStart::makePanel(const std::vector<PortChoice>& ports) {
  auto* const group = new QGroupBox(tr("Panel"));
  auto* const form = new QFormLayout(group);
  form->setVerticalSpacing(isSmallScreen() ? 2 : 6);
  addField(*form, tr("&Width:"), width_, &width_->box());
  addField(*form, tr("&Height:"), height_, &height_->box());
  source_->setObjectName("sizeSource");
  source_->setWordWrap(true);
  form->addRow(source_);
  addField(*form, tr("L&imits:"), limits_, limits_);
  if (!ports.empty()) {
    QWidget* const from = makePorts(ports);
    addField(*form, tr("Touches &from:"), from, from);
  }
  const struct {
    QString caption;
    const char* name;
    std::string MeasureSetup::*text;
  } texts[] = {{tr("&Panel:"), "panelName", &MeasureSetup::panel},
               {tr("Serial n&umber:"), "serialNumber", &MeasureSetup::serialNumber},
               {tr("&Operator:"), "operator", &MeasureSetup::person}};
  for (const auto& [caption, name, text] : texts) {
    auto* const field = new QLineEdit(shownText(setup_.*text));
    constexpr int longest = 100;
    field->setMaxLength(longest);
    field->setObjectName(name);
    makeFingerSized(*field);
    connect(field, &QLineEdit::textChanged, this,
            [this, member = text](const QString& typed) { setup_.*member = typed.toStdString(); });
    addField(*form, caption, field, field);
  }
  return group;
}

void frmMeasureStart::addTest(QWidget* box, const char* name, const QString& caption,
                              const QString& meaning, bool Plan::*wanted) {
  auto* const check = new QCheckBox(caption);
  check->setObjectName(name);
  check->setAccessibleDescription(meaning);
  check->setChecked(setup_.plan.*wanted);
  connect(check, &QCheckBox::toggled, this, [this, wanted](bool on) { setup_.plan.*wanted = on; });
  auto* const label = new QLabel(meaning);
  label->setWordWrap(true);
  box->layout()->addWidget(check);
  box->layout()->addWidget(label);
}

QWidget* frmMeasureStart::makeTests() {
  auto* const group = new QGroupBox(tr("Tests"));
  group->setObjectName("measureTests");
  auto* const column = new QVBoxLayout(group);
  column->setSpacing(isSmallScreen() ? 2 : 4);
  const auto addChoice = [column](const char* name, const QString& says, const QStringList& choices,
                                  int index) {
    auto* const box = new QComboBox;
    box->setObjectName(name);
    box->setAccessibleName(says);
    box->addItems(choices);
    box->setCurrentIndex(index);
    column->addWidget(box);
    return box;
  };
  addTest(group, "testLines", tr("&Lines"),
          tr("Draw along guides: straightness of the panel, offset and tilt of "
             "its calibration."),
          &Plan::lines);
  auto* const lines =
      addChoice("lineSet", tr("Which lines"),
                {tr("10 lines"), tr("18 lines"), tr("18 lines, diagonals and ways back")},
                static_cast<int>(setup_.plan.lineSet));
  connect(lines, &QComboBox::currentIndexChanged, this,
          [this](int index) { setup_.plan.lineSet = static_cast<LineSet>(index); });
  addTest(group, "testTaps", tr("&Taps"),
          tr("Tap targets three times each: accuracy and repeatability."), &Plan::taps);
  auto* const taps =
      addChoice("tapTargets", tr("How many targets"), {tr("9 targets"), tr("25 targets")},
                setup_.plan.tapTargets == manyTargets ? 1 : 0);
  connect(taps, &QComboBox::currentIndexChanged, this,
          [this](int index) { setup_.plan.tapTargets = index == 0 ? fewTargets : manyTargets; });
  addTest(group, "testRest", tr("&Resting finger"),
          tr("Hold a finger still at five places, three seconds each: noise "
             "and drift."),
          &Plan::rest);
  addTest(group, "testCoverage", tr("&Coverage"),
          tr("Rub the whole panel: dead spots, and how far the edges are reached."),
          &Plan::coverage);
  column->addStretch();
  return group;
}

QWidget* frmMeasureStart::makeButtons() {
  auto* const row = new QWidget;
  auto* const buttons = new QHBoxLayout(row);
  const struct {
    QString caption;
    const char* name;
    void (frmMeasureStart::*pressed)();
  } all[] = {{tr("Op&en …"), "cmdOpen", &frmMeasureStart::openRequested},
             {tr("&Start"), "cmdStart", &frmMeasureStart::startRequested},
             {tr("Lea&ve"), "cmdLeaveStart", &frmMeasureStart::leaveRequested}};
  buttons->addStretch();
  for (const auto& [caption, name, pressed] : all) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(true);
    if (pressed == &frmMeasureStart::startRequested) setKind(*button, ButtonKind::primary);
    button->setMinimumWidth(3 * fingerSize());
    makeFingerSized(*button);
    connect(button, &QPushButton::clicked, this, pressed);
    // The keyboard meets "Leave" last, but it stands far from where the next page has it.
    pressed == &frmMeasureStart::leaveRequested ? buttons->insertWidget(0, button)
                                                : buttons->addWidget(button);
  }
  return row;
}

void frmMeasureStart::askForSizeAlone() {
  findChild<QWidget*>("measureTests")->hide();
  findChild<QWidget*>("cmdOpen")->hide();
  auto* const form = findChild<QFormLayout*>();
  form->setRowVisible(limits_, false);
  for (const char* const name : {"panelName", "serialNumber", "operator"})
    form->setRowVisible(findChild<QWidget*>(name), false);
}

void frmMeasureStart::offer(const PanelSize& known) {
  size_ = setup_.size.value_or(known);
  const QSignalBlocker quietWidth(&width_->box());
  const QSignalBlocker quietHeight(&height_->box());
  width_->box().setValue(size_.width.value);
  height_->box().setValue(size_.height.value);
  limits_->refresh();
  showSize();
}

void frmMeasureStart::showSize() {
  switch (size_.source) {
    case SizeSource::screenData:
      return source_->setText(tr("Active area, from the screen."));
    case SizeSource::user:
      return source_->setText(tr("Active area, as entered."));
    case SizeSource::nominal:
      return source_->setText(
          tr("Nominal: the screen does not say how large it "
             "is. Measure the picture without its "
             "frame, and enter width and height."));
  }
}

void frmMeasureStart::takeFocus() {
  width_->setFocus();
  width_->box().selectAll();
}

}  // namespace touch::measure
