#include "serial/debugger/panels/frmBytesPanel.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <span>
#include <utility>

#include "serial/commands/command_sets.h"
#include "serial/debugger/console_log.h"
#include "support/files/whole_file.h"
#include "ui/controls/finger_style.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

constexpr std::size_t mostShown = 128;  // bytes: the rest of a long line tells nobody more

QLabel* makeBytesLabel(const char* name) {
  auto* const label = new QLabel;
  label->setObjectName(name);
  label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  return label;
}

}  // namespace

frmBytesPanel::frmBytesPanel(CommandSet set, SendHistory& history, std::filesystem::path workFolder,
                             QWidget* parent)
    : QWidget(parent),
      history_(history),
      workFolder_(std::move(workFolder)),
      set_(set),
      listed_(new QComboBox),
      digit_(new QComboBox),
      typed_(new QLineEdit),
      kind_(new QComboBox),
      send_(new QPushButton(tr("&Send bytes"))),
      bytes_(makeBytesLabel("lblBytes")),
      replyText_(makeBytesLabel("lblBytesReplyText")),
      replyHex_(makeBytesLabel("lblBytesReplyHex")) {
  listed_->setObjectName("comboListed");
  listed_->setAccessibleName(tr("Command to begin with"));
  listed_->setPlaceholderText(tr("Begin with a command …"));
  listed_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  listed_->setMinimumContentsLength(10);
  digit_->setObjectName("comboDigit");
  digit_->setAccessibleName(tr("Digit of the command"));
  digit_->setPlaceholderText(tr("Digit"));
  for (int digit = 0; digit <= greatestDigit; ++digit)
    digit_->addItem(QString::number(digit));
  digit_->hide();
  auto* const caption = new QLabel(tr("W&hat to send:"));
  caption->setBuddy(typed_);
  typed_->setObjectName("typedBytes");
  typed_->setAccessibleName(tr("Bytes to send"));
  typed_->setInputMethodHints(Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
  typed_->installEventFilter(this);
  kind_->setObjectName("comboTypedAs");
  kind_->setAccessibleName(tr("How they are typed"));
  kind_->addItems({tr("As text"), tr("In hexadecimal")});
  send_->setObjectName("cmdSendBytes");
  bytes_->setAccessibleName(tr("What is sent, byte by byte"));
  replyText_->setAccessibleName(tr("Reply, text"));
  replyHex_->setAccessibleName(tr("Reply, hexadecimal"));

  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(isSmallScreen() ? 2 : 6);
  grid->addWidget(listed_, 0, 0);
  grid->addWidget(digit_, 0, 1);
  grid->addWidget(caption, 1, 0, 1, 2);
  grid->addWidget(typed_, 2, 0, 1, 2);
  grid->addWidget(kind_, 3, 0);
  grid->addWidget(send_, 3, 1);
  grid->addWidget(makeButton("cmdSaveSent", tr("Save &list …"), &frmBytesPanel::saveHistory), 4, 0);
  grid->addWidget(makeButton("cmdLoadSent", tr("Lo&ad list …"), &frmBytesPanel::loadHistory), 4, 1);
  int row = 5;
  for (QLabel* const label : {bytes_, replyText_, replyHex_})
    grid->addWidget(label, row++, 0, 1, 2);
  grid->setRowStretch(row, 1);
  grid->setColumnStretch(0, 1);

  connect(listed_, &QComboBox::activated, this, [this] {
    digit_->setCurrentIndex(-1);
    takeListed();
  });
  connect(digit_, &QComboBox::activated, this, &frmBytesPanel::takeListed);
  connect(typed_, &QLineEdit::textChanged, this, &frmBytesPanel::check);
  connect(typed_, &QLineEdit::returnPressed, this, &frmBytesPanel::send);
  connect(kind_, &QComboBox::currentIndexChanged, this, [this](int kind) {
    typed_->setPlaceholderText(kind == 0 ? "\\x01OI\\r" : "01 4F 49 0D");
    check();
  });
  connect(send_, &QPushButton::clicked, this, &frmBytesPanel::send);
  typed_->setPlaceholderText("\\x01OI\\r");
  setCommands(set);
  showReply(std::nullopt);
  check();
}

void frmBytesPanel::setCommands(CommandSet set) {
  set_ = set;
  listed_->clear();
  const auto entries = cm1set(set);
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (listedLine(set, i, 0)) listed_->addItem(shownText(entries[i]), static_cast<int>(i));
  listed_->setCurrentIndex(-1);
  listed_->view()->setMinimumWidth(listed_->view()->sizeHintForColumn(0) + 2 * fingerSize());
  digit_->hide();
}

void frmBytesPanel::takeListed() {
  const auto position = static_cast<std::size_t>(listed_->currentData().toInt());
  digit_->setVisible(set_ != CommandSet::e02 &&
                     needsDigit(commandWord(listed_->currentText().toStdString())));
  const auto digit =
      digit_->currentIndex() >= 0 ? std::optional(digit_->currentIndex()) : std::nullopt;
  if (const auto line = listedLine(set_, position, digit)) return show(*line);
  typed_->clear();
  bytes_->setText(tr("Choose the digit first."));
}

TypedLine frmBytesPanel::line() const {
  return {kind_->currentIndex() == 0 ? TypedAs::text : TypedAs::hex, typed_->text().toStdString()};
}

void frmBytesPanel::show(const TypedLine& line) {
  kind_->setCurrentIndex(line.as == TypedAs::text ? 0 : 1);
  typed_->setText(shownText(line.text));
}

void frmBytesPanel::check() {
  const auto bytes = bytesOf(line());
  send_->setEnabled(possible_ && bytes.has_value());
  if (typed_->text().isEmpty()) {
    bytes_->clear();
  } else if (!bytes) {
    bytes_->setText(shownText(bytes.error().describe()));
  } else {
    const auto shown = std::span(*bytes).first(std::min(bytes->size(), mostShown));
    bytes_->setText(tr("%1\n%2\nBytes: %3")
                        .arg(shownText(hexText(shown)), shownText(plainText(shown)),
                             QString::number(bytes->size())));
  }
}

void frmBytesPanel::send() {
  const TypedLine typed = line();
  const auto bytes = bytesOf(typed);
  if (!possible_ || !bytes) return;
  history_.add(typed);
  emit sendRequested(*bytes);
}

QPushButton* frmBytesPanel::makeButton(const char* name, const QString& caption,
                                       void (frmBytesPanel::*action)()) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(tr("The lines that were sent, which Up and Down bring back, as a script"));
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

void frmBytesPanel::saveHistory() {
  const auto file = askTextFileToSave(this, tr("Save what was sent"), workFolder_ / "sent.tus",
                                      tr("Scripts (*.tus)"));
  if (!file) return;
  const auto written = writeWholeFile(*file, scriptOf(history_.lines()));
  emit statusChanged(written ? tr("Saved in %1").arg(shownText(file->string()))
                             : shownText(written.error().describe()));
}

void frmBytesPanel::loadHistory() {
  const auto file = askTextFileToOpen(this, tr("Load what was sent"), workFolder_,
                                      tr("Scripts (*.tus);;All files (*)"));
  if (!file) return;
  const auto script = readScript(*file);
  if (!script) {
    emit statusChanged(shownText(script.error().describe()));
    return;
  }
  const auto lines = linesSentBy(*script);
  for (const TypedLine& line : lines)
    history_.add(line);
  emit statusChanged(tr("Lines loaded: %1. Press Up in the line.").arg(lines.size()));
}

void frmBytesPanel::allowSending(bool possible) {
  possible_ = possible;
  send_->setEnabled(possible_ && bytesOf(line()).has_value());
}

void frmBytesPanel::showReply(const std::optional<DebuggerReply>& reply) {
  replyText_->setText(reply ? shownText(reply->text) : QString());
  replyHex_->setText(reply ? shownText(reply->hex) : QString());
  for (QLabel* const label : {replyText_, replyHex_})
    label->setVisible(!label->text().isEmpty());
}

bool frmBytesPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Up && key != Qt::Key_Down) return QWidget::eventFilter(watched, event);
  const auto kept = key == Qt::Key_Up ? history_.older(line()) : history_.newer();
  if (kept) show(*kept);
  return true;
}

}  // namespace touch
