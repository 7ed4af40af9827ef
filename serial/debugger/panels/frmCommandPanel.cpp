#include "serial/debugger/panels/frmCommandPanel.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "serial/commands/command_sets.h"
#include "serial/commands/parameter_entry.h"
#include "ui/controls/finger_style.h"
#include "ui/text.h"

namespace touch {

namespace {

// Long entries are cut in the box and whole in its list.
constexpr int shownCharacters = 10;

QComboBox* makeCombo(const char* name) {
  auto* const combo = new QComboBox;
  combo->setObjectName(name);
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo->setMinimumContentsLength(shownCharacters);
  return combo;
}

bool movesFocusInWindow(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
         reason == Qt::MouseFocusReason || reason == Qt::ShortcutFocusReason;
}

}  // namespace

frmCommandPanel::frmCommandPanel(CommandSet set, QWidget* parent)
    : QWidget(parent),
      set_(set),
      entries_(makeCombo("Combo1")),
      send_(new QPushButton(tr("&Send"))),
      settingCaption_(new QLabel),
      settings_(makeCombo("Combo2")),
      address_(new QScrollBar(Qt::Vertical)),
      addressLabel_(new QLabel),
      dataPanel_(new QGroupBox(tr("DATA VALUE"))),
      high_(new QLineEdit),
      low_(new QLineEdit),
      reply_{new QLabel, new QLabel, new QLabel} {
  auto* const entriesLabel = new QLabel(tr("&Command:"));
  entriesLabel->setBuddy(entries_);
  entries_->setAccessibleName(tr("Command"));
  send_->setObjectName("Command2_0");
  auto* const entryRow = new QHBoxLayout;
  entryRow->addWidget(entriesLabel);
  entryRow->addWidget(entries_, 1);
  entryRow->addWidget(send_);

  auto* const parameters = new QHBoxLayout;
  addressPanel_ = makeAddress();
  parameters->addWidget(addressPanel_);
  parameters->addWidget(makeData(), 1, Qt::AlignTop);

  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(isSmallScreen() ? 2 : 6);
  layout->addWidget(makeSets(set));
  layout->addLayout(entryRow);
  settingPanel_ = makeSetting();
  layout->addWidget(settingPanel_);

  const QString names[] = {tr("Reply, text"), tr("Reply, hexadecimal"), tr("Reply, remark")};
  for (std::size_t i = 0; i < reply_.size(); ++i) {
    reply_[i]->setObjectName("lblshow_" + QString::number(i));
    reply_[i]->setAccessibleName(names[i]);
    reply_[i]->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    reply_[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
    reply_[i]->setWordWrap(true);
    reply_[i]->hide();
    layout->addWidget(reply_[i]);
  }
  layout->addLayout(parameters, 1);

  connect(entries_, &QComboBox::currentIndexChanged, this, &frmCommandPanel::entryChosen);
  connect(send_, &QPushButton::clicked, this, &frmCommandPanel::sendRequested);
  cm1set();
}

QWidget* frmCommandPanel::makeSets(CommandSet set) {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  const struct {
    const char* name;
    QString caption;
    CommandSet chosen;
  } options[] = {{"Option1", tr("&M01 Mode"), CommandSet::m01},
                 {"Option2", tr("E&02 Mode"), CommandSet::e02},
                 {"Option3", tr("&quorvane"), CommandSet::quorvane}};
  for (const auto& [name, caption, chosen] : options) {
    auto* const option = new QRadioButton(caption);
    option->setObjectName(name);
    option->setChecked(chosen == set);
    row->addWidget(option);
    connect(option, &QRadioButton::clicked, this, [this, clicked = chosen] {
      set_ = clicked;
      emit setChosen(clicked);
      cm1set();
    });
  }
  row->addStretch();
  return box;
}

QWidget* frmCommandPanel::makeSetting() {
  auto* const box = new QWidget;
  auto* const column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  settingCaption_->setBuddy(settings_);
  column->addWidget(settingCaption_);
  column->addWidget(settings_);
  return box;
}

QWidget* frmCommandPanel::makeAddress() {
  auto* const caption = new QLabel(tr("EEP &Address"));
  caption->setBuddy(address_);
  address_->setObjectName("VScroll1");
  address_->setAccessibleName(tr("EEP Address"));
  address_->setFocusPolicy(Qt::StrongFocus);
  address_->setMinimumSize(fingerSize(), 2 * fingerSize() + 16);
  address_->setMaximumHeight(8 * fingerSize());
  address_->setRange(0, addressSelectorEnd);
  address_->setPageStep(16);
  addressLabel_->setObjectName("lblAddress");
  addressLabel_->setFont(resized(QFontDatabase::systemFont(QFontDatabase::FixedFont), 1.6));
  connect(address_, &QScrollBar::valueChanged, this, [this](int value) {
    addressLabel_->setText(shownText(selectedAddress(value)));
    address_->setAccessibleDescription(addressLabel_->text());
  });
  address_->setValue(addressSelectorStart);

  auto* const box = new QWidget;
  auto* const grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(caption, 0, 0, 1, 2);
  grid->addWidget(address_, 1, 0);
  grid->addWidget(addressLabel_, 1, 1);
  grid->setRowStretch(1, 1);
  return box;
}

QWidget* frmCommandPanel::makeData() {
  dataPanel_->setObjectName("dataFrame");
  auto* const grid = new QGridLayout(dataPanel_);
  const struct {
    QLineEdit* box;
    const char* name;
    QString caption;
  } boxes[] = {{high_, "Text2", tr("&HighByte")}, {low_, "Text5", tr("&LowByte")}};
  int row = 0;
  for (const auto& [box, name, caption] : boxes) {
    auto* const label = new QLabel(caption);
    label->setBuddy(box);
    box->setObjectName(name);
    box->setAccessibleName(caption);
    box->setMaximumWidth(2 * fingerSize());
    box->setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhPreferUppercase);
    box->installEventFilter(this);
    grid->addWidget(label, row, 0);
    grid->addWidget(box, row, 1);
    ++row;
    connect(box, &QLineEdit::textEdited, this, [this, edited = box] { typed(*edited); });
  }
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(2, 1);
  return dataPanel_;
}

void frmCommandPanel::cm1set() {
  entries_->clear();
  for (const std::string_view entry : touch::cm1set(set_))
    entries_->addItem(shownText(entry));
  entries_->setCurrentIndex(-1);
  entries_->view()->setMinimumWidth(entries_->view()->sizeHintForColumn(0) + 2 * fingerSize());
  entryChosen();
}

void frmCommandPanel::entryChosen() {
  const CommandPanels panels = panelsFor(set_, entries_->currentText().toStdString());
  addressPanel_->setVisible(panels.address);
  dataPanel_->setVisible(panels.data);
  settings_->clear();
  const int position = entries_->currentIndex();
  const auto list = set_ == CommandSet::e02 && position >= 0
                        ? settingListAt(static_cast<std::size_t>(position))
                        : std::nullopt;
  settingPanel_->setVisible(list.has_value());
  if (!list) return;
  settingCaption_->setText(shownText(list->caption));
  settings_->setAccessibleName(settingCaption_->text());
  for (const std::string_view item : list->items)
    settings_->addItem(shownText(item));
  settings_->setCurrentIndex(-1);
}

SendChoice frmCommandPanel::choice() const {
  SendChoice choice{.entry = entries_->currentText().toStdString(),
                    .address = addressLabel_->text().toStdString(),
                    .high = high_->text().toStdString(),
                    .low = low_->text().toStdString()};
  if (settings_->currentIndex() >= 0) {
    choice.setting = static_cast<std::size_t>(settings_->currentIndex());
  }
  return choice;
}

void frmCommandPanel::showReply(const std::optional<DebuggerReply>& reply) {
  reply_[0]->setText(reply ? shownText(reply->text) : QString());
  reply_[1]->setText(reply ? shownText(reply->hex) : QString());
  for (QLabel* const label : reply_)
    label->setVisible(!label->text().isEmpty());
}

void frmCommandPanel::allowSending(bool possible) {
  send_->setEnabled(possible);
}

void frmCommandPanel::focusEntries() {
  entries_->setFocus();
}

void frmCommandPanel::typed(QLineEdit& box) {
  const std::string text = box.text().toStdString();
  const std::string kept = keptDataText(text);
  if (kept != text) box.setText(shownText(kept));
  box.setStyleSheet({});
  if (&box == high_ && fillsDataBox(kept)) {
    low_->setFocus(Qt::TabFocusReason);
    low_->selectAll();
  }
}

void frmCommandPanel::leave(QLineEdit& box) {
  if (const auto text = leftDataText(box.text().toStdString())) {
    box.setText(shownText(*text));
    box.setStyleSheet({});
    return;
  }
  box.setStyleSheet("QLineEdit { border: 2px solid #c00000 }");
  // When the focus has arrived where it was going: only then can it be taken back.
  QTimer::singleShot(0, &box, [&box] {
    box.setFocus();
    box.selectAll();
  });
}

bool frmCommandPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut &&
      movesFocusInWindow(static_cast<QFocusEvent*>(event)->reason())) {
    leave(*static_cast<QLineEdit*>(watched));
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace touch
