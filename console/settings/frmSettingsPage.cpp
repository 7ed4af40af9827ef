#include "console/settings/frmSettingsPage.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "console/actions/actions.h"
#include "console/settings/rotation_option.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/guide/help.h"
#include "ui/style/face_style.h"
#include "ui/text.h"

namespace touch {

namespace {

struct SwitchControl {
  const char* name;
  const char* setting;
  bool inverted;
};
constexpr SwitchControl switchControls[] = {{"Check1", "up-sound", false},
                                            {"Check2", "down-sound", false},
                                            {"Check3", "double-click", false},
                                            {"Check4", "right-click", false},
                                            {"Check5", "touch-panel", true}};

struct BarControl {
  const char* name;
  const char* label;
  const char* mark;
  const char* setting;
  SettingsPanel::Bar bar;
};
constexpr BarControl barControls[] = {
    {"HScroll1", "lblDoubleClickSpeed", "unsentSpeed", "double-click-speed",
     SettingsPanel::Bar::doubleClickSpeed},
    {"HScroll2", "lblDoubleClickArea", "unsentArea", "double-click-area",
     SettingsPanel::Bar::doubleClickArea},
    {"HScrRightClickTime", "lblRightClickTime", "unsentRightClick", "right-click-time",
     SettingsPanel::Bar::rightClickTime},
};

// Where every line counts there is none for pictures.
QRadioButton* makeOption(const QString& caption, int value, bool isRotation) {
  if (!isRotation || isSmallScreen()) return new QRadioButton(caption);
  return new RotationOption(caption, value);
}

QFont boldened(QFont font) {
  font.setBold(true);
  return font;
}

/// So that in a window of the usual size the whole page is seen at once.
template <typename Layout>
Layout* flatten(Layout* rows) {
  constexpr int aboveAndBelow = 6;
  const QMargins usual = rows->contentsMargins();
  rows->setContentsMargins(usual.left(), std::min(usual.top(), aboveAndBelow), usual.right(),
                           std::min(usual.bottom(), aboveAndBelow));
  return rows;
}

QString captionOf(const char* setting) {
  return spokenText("settings", findSetting(setting)->caption);
}

}  // namespace

frmSettingsPage::frmSettingsPage(MainModel& model, Actions& actions, SettingsPanel& panel,
                                 std::filesystem::path workFolder)
    : commands_(actions),
      panel_(panel),
      workFolder_(std::move(workFolder)),
      sensitivity_(new QComboBox),
      cursorHelp_(new QPlainTextEdit),
      actions_(makeActions()) {
  setHelpChapter(*this, "Settings");
  // In the order in which the options stand on the screen, which is not that of the angles.
  QWidget* const rotation =
      makeOptions("rotation", "Option2_", captionOf("rotation"), {2, 1, 0, 3}, rotation_);
  QWidget* const touchMode =
      makeOptions("touch-mode", "Option3_", tr("Touch mode"), {1, 2, 3}, touchMode_);
  auto* const right = new QVBoxLayout;
  for (QWidget* const box : {rotation, touchMode, makeSensitivity()})
    right->addWidget(box);
  columns_ = new QBoxLayout(QBoxLayout::LeftToRight);
  columns_->addWidget(makeSwitches());
  columns_->addLayout(right);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(columns_);
  layout->addWidget(makeTiming());
  layout->addWidget(makeCursorHelp());
  layout->addStretch();
  setTabOrder(switches_.back().box, rotation->findChild<QRadioButton*>());
  model.watch([this, &model](Part part) {
    if (part == Part::settings) fill();
    if (part != Part::controllers) return;
    setEnabled(model.selected.has_value());
    actions_->setEnabled(model.selected.has_value());
  });
}

void frmSettingsPage::change(const Setting& setting, int value) {
  commands_.perform(tr("Changing the setting …").toStdString(),
                    [this, &setting, value] { return panel_.change(setting, value); });
}

void frmSettingsPage::changeSensitivity(int index) {
  commands_.perform(tr("Changing the setting …").toStdString(),
                    [this, index] { return panel_.changeSensitivity(index).value_or(Notice()); });
}

void frmSettingsPage::confirm() {
  commands_.perform(tr("Changing the setting …").toStdString(),
                    [this] { return panel_.confirm(); });
}

QSize frmSettingsPage::minimumSizeHint() const {
  // One column under the other is always possible.
  return {timing_->minimumSizeHint().width(), QWidget::minimumSizeHint().height()};
}

void frmSettingsPage::resizeEvent(QResizeEvent* event) {
  const int roomForTwo = columns_->itemAt(0)->minimumSize().width() +
                         columns_->itemAt(1)->minimumSize().width() + fingerSize();
  columns_->setDirection(event->size().width() < roomForTwo ? QBoxLayout::TopToBottom
                                                            : QBoxLayout::LeftToRight);
}

QWidget* frmSettingsPage::makeSwitches() {
  auto* const group = new QGroupBox(tr("Touch"));
  auto* const column = flatten(new QVBoxLayout(group));
  column->setSpacing(0);
  for (std::size_t i = 0; i < switches_.size(); ++i) {
    const SwitchControl& control = switchControls[i];
    const Setting* const setting = findSetting(control.setting);
    auto* const box = new QCheckBox(spokenText("settings", setting->caption));
    box->setObjectName(control.name);
    switches_[i] = {box, setting, control.inverted};
    column->addWidget(box);
    connect(box, &QCheckBox::toggled, this, [this, control = switches_[i]](bool checked) {
      change(*control.setting, checked != control.inverted ? 1 : 0);
    });
  }
  return group;
}

QWidget* frmSettingsPage::makeOptions(const char* settingName, const char* name,
                                      const QString& title, std::initializer_list<int> order,
                                      QButtonGroup*& group) {
  const Setting* const setting = findSetting(settingName);
  auto* const box = new QGroupBox(title);
  auto* const row = flatten(new QHBoxLayout(box));
  group = new QButtonGroup(this);
  const bool isRotation = setting == findSetting("rotation");
  for (const int value : order) {
    const std::size_t index = static_cast<std::size_t>(value - setting->lowest);
    auto* const option =
        makeOption(spokenText("settings", setting->choices[index].caption), value, isRotation);
    option->setObjectName(name + QString::number(index));
    group->addButton(option, value);
    row->addWidget(option);
  }
  // A click counts even on the option that is shown already: what is shown and what the driver does
  // may differ.
  connect(group, &QButtonGroup::idClicked, this,
          [this, setting](int value) { change(*setting, value); });
  return box;
}

QWidget* frmSettingsPage::makeSensitivity() {
  const Setting* const setting = findSetting("sensitivity");
  auto* const box = new QGroupBox(spokenText("settings", setting->caption));
  auto* const column = flatten(new QVBoxLayout(box));
  sensitivity_->setObjectName("Combo1");
  sensitivity_->setAccessibleName(spokenText("settings", setting->caption));
  sensitivity_->setPlaceholderText(tr("(current value unknown)"));
  for (const SettingChoice& choice : setting->choices) {
    sensitivity_->addItem(spokenText("settings", choice.caption));
  }
  sensitivity_->setCurrentIndex(-1);
  column->addWidget(sensitivity_);
  column->addStretch();
  connect(sensitivity_, &QComboBox::activated, this, &frmSettingsPage::changeSensitivity);
  return box;
}

QWidget* frmSettingsPage::makeTiming() {
  auto* const box = new QGroupBox(tr("Timing (press Confirm to apply)"));
  timing_ = box;
  auto* const grid = flatten(new QGridLayout(box));
  constexpr int columnsOfABar = 4;  // caption, bar, value, and what is between two
  for (std::size_t i = 0; i < bars_.size(); ++i) {
    const BarControl& control = barControls[i];
    auto* const scroll = new QScrollBar(Qt::Horizontal);
    auto* const value = new QLabel;
    auto* const mark = new QLabel(tr("not sent"));
    auto* const caption = new QLabel(captionOf(control.setting));
    scroll->setObjectName(control.name);
    scroll->setAccessibleName(caption->text());
    scroll->setFocusPolicy(Qt::StrongFocus);
    // A scroll bar's keys are made for text, where "right" goes back; here it means more.
    scroll->setInvertedControls(false);
    scroll->setMinimumHeight(fingerSize());
    scroll->setMinimumWidth(2 * fingerSize());
    caption->setWordWrap(true);
    value->setObjectName(control.label);
    value->setFont(boldened(value->font()));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(fingerSize());
    mark->setObjectName(control.mark);
    mark->setFont(boldened(mark->font()));
    QSizePolicy keepsPlace = mark->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    mark->setSizePolicy(keepsPlace);
    mark->hide();
    bars_[i] = {control.bar, scroll, value, mark};
    // Below each other beside their bar; two bars are beside each other where there is room.
    auto* const shown = new QGridLayout;
    shown->setSpacing(0);
    shown->setColumnStretch(1, 1);
    // As much above the value as the mark takes below it: so it stands beside the bar's middle.
    shown->setRowMinimumHeight(0, mark->sizeHint().height());
    shown->addWidget(value, 1, 0);
    // Nobody knows in what the driver counts the area.
    shown->addWidget(
        new QLabel(control.bar == SettingsPanel::Bar::doubleClickArea ? QString() : ' ' + tr("ms")),
        1, 1);
    shown->addWidget(mark, 2, 0, 1, 2, Qt::AlignLeft);
    const bool isWide = !isSmallScreen();
    const int row = isWide ? static_cast<int>(i) / 2 : static_cast<int>(i);
    const int column = isWide ? columnsOfABar * (static_cast<int>(i) % 2) : 0;
    const bool isLast = i + 1 == bars_.size();
    grid->addWidget(caption, row, column);
    grid->addWidget(scroll, row, column + 1, 1, isWide && isLast ? columnsOfABar + 1 : 1);
    grid->addLayout(shown, row, (isWide && isLast ? columnsOfABar : column) + 2);
    connect(scroll, &QScrollBar::valueChanged, this, [this, controls = bars_[i]](int position) {
      panel_.moveBar(controls.bar, position);
      showBar(controls);
    });
  }
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(1, 1);
  if (!isSmallScreen()) {
    constexpr int betweenBars = 16;
    grid->setColumnMinimumWidth(columnsOfABar - 1, betweenBars);
    grid->setColumnStretch(columnsOfABar + 1, 1);
  }
  return box;
}

void frmSettingsPage::showBar(const BarControls& controls) {
  controls.value->setText(shownText(panel_.bars().label(controls.bar)));
  controls.mark->setVisible(panel_.bars().isUnsent(controls.bar));
  controls.scroll->setAccessibleDescription(controls.mark->isHidden() ? QString()
                                                                      : controls.mark->text());
}

QWidget* frmSettingsPage::makeActions() {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  auto* const hideCursor = new QPushButton(tr("Hide C&ursor"));
  hideCursor->setObjectName("Command17");
  auto* const confirm = new QPushButton(tr("Con&firm"));
  confirm->setObjectName("Command6");
  setKind(*confirm, ButtonKind::primary);
  row->addWidget(hideCursor);
  row->addStretch();
  row->addWidget(confirm);
  connect(hideCursor, &QPushButton::clicked, this, &frmSettingsPage::showCursorNote);
  connect(confirm, &QPushButton::clicked, this, &frmSettingsPage::confirm);
  return box;
}

QWidget* frmSettingsPage::makeCursorHelp() {
  cursorHelp_->setObjectName("cursorHelp");
  cursorHelp_->setAccessibleName(tr("How to hide the cursor"));
  cursorHelp_->setReadOnly(true);
  cursorHelp_->setTabChangesFocus(true);
  cursorHelp_->setMinimumHeight(3 * fingerSize());
  cursorHelp_->hide();
  return cursorHelp_;
}

void frmSettingsPage::showCursorNote() {
  const auto note = cursorNote(workFolder_);
  if (!note) {
    commands_.tell(Notice::error(note.error().describe()));
    return;
  }
  cursorHelp_->setPlainText(shownText(*note));
  cursorHelp_->show();
  cursorHelp_->setFocus();
  bringIntoView(*cursorHelp_);
  if (cursorHelp_->toPlainText().trimmed().isEmpty()) {
    std::error_code ignored;
    commands_.tell((std::filesystem::exists(workFolder_ / "cursoroff.txt", ignored)
                        ? tr("No instructions found (\"cursoroff.txt\" is empty).")
                        : tr("No instructions found (\"cursoroff.txt\" is missing)."))
                       .toStdString());
  }
}

void frmSettingsPage::fill() {
  const DriverSettings& reported = panel_.shown();
  for (const Switch& control : switches_) {
    const QSignalBlocker silent(control.box);
    control.box->setChecked((control.setting->get(reported) != 0) != control.inverted);
  }
  const auto choose = [](QButtonGroup* group, int value) {
    const QSignalBlocker silent(group);
    if (QAbstractButton* const option = group->button(value)) {
      option->setChecked(true);
      return;
    }
    // A value that no option stands for leaves all of them off.
    group->setExclusive(false);
    for (QAbstractButton* const option : group->buttons())
      option->setChecked(false);
    group->setExclusive(true);
  };
  choose(rotation_, reported.rotation);
  choose(touchMode_, reported.touchMode);
  sensitivity_->setCurrentIndex(panel_.sensitivity().value_or(-1));
  const TimingBars& bars = panel_.bars();
  for (const BarControls& controls : bars_) {
    const QSignalBlocker silent(controls.scroll);
    const TimingBars::Range range = bars.range(controls.bar);
    controls.scroll->setRange(range.lowest, range.highest);
    controls.scroll->setValue(bars.position(controls.bar));
    showBar(controls);
  }
  panel_.filled();
}

}  // namespace touch
