#include "serial/debugger/panels/frmConsolePanel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "serial/receiving/packet_field.h"
#include "support/files/whole_file.h"
#include "ui/controls/finger_style.h"
#include "ui/style/colours.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

/// What the choice beside the search shows.
struct Kinds {
  const char* caption = nullptr;
  ConsoleFilter filter;
};
constexpr int everything = 0;
const Kinds kinds[] = {
    {QT_TRANSLATE_NOOP("touch::frmConsolePanel", "Everything"), {}},
    {QT_TRANSLATE_NOOP("touch::frmConsolePanel", "Commands and answers"), {.reports = false}},
    {QT_TRANSLATE_NOOP("touch::frmConsolePanel", "Sent"),
     {.received = false, .reports = false, .notes = false}},
    {QT_TRANSLATE_NOOP("touch::frmConsolePanel", "Received"), {.sent = false, .notes = false}},
    {QT_TRANSLATE_NOOP("touch::frmConsolePanel", "Reports"),
     {.sent = false, .received = false, .notes = false}},
};

QTextCharFormat formatOf(ConsoleLineKind kind, const QPalette& palette) {
  const Colours& colours = coloursOf(palette);
  QTextCharFormat format;
  switch (kind) {
    case ConsoleLineKind::sent:
      format.setForeground(colours.accent);
      break;
    case ConsoleLineKind::received:
    case ConsoleLineKind::report:
      format.setForeground(colours.good);
      break;
    case ConsoleLineKind::note:
      format.setForeground(colours.text);
      break;
  }
  return format;
}

}  // namespace

frmConsolePanel::frmConsolePanel(ConsoleLog& log, const std::filesystem::path& workFolder,
                                 std::function<ReportDecoder()> makeDecoder, QWidget* parent)
    : QWidget(parent),
      log_(log),
      workFolder_(workFolder),
      makeDecoder_(std::move(makeDecoder)),
      text_(new QPlainTextEdit),
      kinds_(new QComboBox),
      times_(new QComboBox),
      searched_(new QLineEdit),
      onlyMatches_(new QCheckBox(tr("Matches onl&y"))),
      pause_(new QCheckBox(tr("Pa&use view"))),
      filterBar_(makeFilterBar()),
      keepBar_(makeKeepBar()),
      view_(log),
      writer_(makeWriter()) {
  setObjectName("consolePanel");
  text_->setObjectName("Text1");
  text_->setAccessibleName(tr("Console"));
  text_->setReadOnly(true);
  text_->setTabChangesFocus(true);
  // On a small screen a scroll bar below would leave no room for the lines.
  text_->setLineWrapMode(isSmallScreen() ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
  text_->setMaximumBlockCount(static_cast<int>(ConsoleView::most));
  text_->setFont(
      resized(QFontDatabase::systemFont(QFontDatabase::FixedFont), isSmallScreen() ? 0.8 : 1));
  text_->setMinimumHeight((isSmallScreen() ? 1 : 2) * fingerSize());
  text_->viewport()->installEventFilter(this);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  connect(text_, &QPlainTextEdit::cursorPositionChanged, this, &frmConsolePanel::markByte);

  pause_->setObjectName("checkPauseView");
  pause_->setToolTip(tr("Recording goes on meanwhile"));
  connect(pause_, &QCheckBox::toggled, this, [this](bool on) {
    log_.pause(on);
    renew();
  });
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(text_);
}

QWidget* frmConsolePanel::makeFilterBar() {
  kinds_->setObjectName("comboFilter");
  kinds_->setAccessibleName(tr("Lines to show"));
  kinds_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  kinds_->setMinimumContentsLength(10);
  for (const Kinds& kind : kinds)
    kinds_->addItem(tr(kind.caption));
  searched_->setObjectName("searchedText");
  searched_->setAccessibleName(tr("Text to look for"));
  searched_->setPlaceholderText(tr("Search text"));
  searched_->setMinimumWidth(2 * fingerSize());
  onlyMatches_->setObjectName("checkOnlyMatches");
  auto* const find = new QPushButton(tr("&Find"));
  find->setObjectName("cmdFind");

  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(kinds_);
  row->addWidget(searched_, 1);
  row->addWidget(find);
  row->addWidget(onlyMatches_);
  connect(kinds_, &QComboBox::currentIndexChanged, this, &frmConsolePanel::renew);
  connect(onlyMatches_, &QCheckBox::toggled, this, &frmConsolePanel::renew);
  connect(searched_, &QLineEdit::textChanged, this, &frmConsolePanel::renew);
  connect(searched_, &QLineEdit::returnPressed, this, &frmConsolePanel::findNext);
  connect(find, &QPushButton::clicked, this, &frmConsolePanel::findNext);
  return bar;
}

QWidget* frmConsolePanel::makeKeepBar() {
  auto* const copyButton = new QPushButton(tr("C&opy"));
  copyButton->setObjectName("cmdCopy");
  auto* const saveButton = new QPushButton(tr("Sa&ve …"));
  saveButton->setObjectName("cmdSave");
  times_->setObjectName("comboTimes");
  times_->setAccessibleName(tr("Times of the lines"));
  // In the order of ConsoleTimes.
  times_->addItems({tr("Since the start"), tr("Since the last"), tr("Time of day")});
  times_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  times_->setMinimumContentsLength(8);
  connect(times_, &QComboBox::currentIndexChanged, this, [this] {
    showAll();
    renew();
  });
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(times_);
  row->addWidget(copyButton);
  row->addWidget(saveButton);
  connect(copyButton, &QPushButton::clicked, this, &frmConsolePanel::copy);
  connect(saveButton, &QPushButton::clicked, this, &frmConsolePanel::save);
  return bar;
}

ConsoleFilter frmConsolePanel::filter() const {
  ConsoleFilter filter = kinds[std::max(kinds_->currentIndex(), everything)].filter;
  if (onlyMatches_->isChecked()) filter.containing = searched_->text().toStdString();
  return filter;
}

void frmConsolePanel::renew() {
  view_.choose(filter());
  view_.renew();
  const auto change = view_.takeChange();
  if (change.anew) {
    showAll();
  } else if (change.added > 0) {
    showLast(std::min(change.added, view_.lines().size()));
  }
}

void frmConsolePanel::showAll() {
  const int place = text_->verticalScrollBar()->value();
  const bool followed = isAtEnd();
  text_->clear();
  writer_ = makeWriter();
  showLast(view_.lines().size());
  auto* const bar = text_->verticalScrollBar();
  bar->setValue(followed ? bar->maximum() : std::min(place, bar->maximum()));
}

bool frmConsolePanel::isAtEnd() const {
  const auto* const bar = text_->verticalScrollBar();
  return bar->value() >= bar->maximum();
}

void frmConsolePanel::showLast(std::size_t count) {
  const bool followed = isAtEnd();
  // In one step, so that the text is laid out once and not for each line.
  QTextCursor cursor(text_->document());
  cursor.beginEditBlock();
  const auto& lines = view_.lines();
  for (std::size_t i = lines.size() - count; i < lines.size(); ++i)
    append(cursor, lines[i]);
  cursor.endEditBlock();
  auto* const bar = text_->verticalScrollBar();
  if (followed) bar->setValue(bar->maximum());
}

ConsoleWriter frmConsolePanel::makeWriter() const {
  return {static_cast<ConsoleTimes>(times_->currentIndex()), log_.started()};
}

void frmConsolePanel::append(QTextCursor& cursor, const ConsoleLine& line) {
  cursor.movePosition(QTextCursor::End);
  if (text_->document()->characterCount() > 1) cursor.insertBlock();
  // A note of several lines stays one block: blocks are counted as lines.
  cursor.insertText(shownText(writer_.next(line)).replace('\n', QChar::LineSeparator),
                    formatOf(line.kind, palette()));
}

void frmConsolePanel::markByte() {
  if (!text_->extraSelections().isEmpty()) text_->setExtraSelections({});
  const QTextCursor at = text_->textCursor();
  const auto number = static_cast<std::size_t>(at.blockNumber());
  if (number >= view_.lines().size() || view_.lines()[number].bytes.empty()) return;
  const ConsoleLine& line = view_.lines()[number];
  const QString digits = QString::fromStdString(hexText(line.bytes));
  const qsizetype begin = at.block().text().lastIndexOf(digits);
  const qsizetype column = at.positionInBlock() - begin;
  if (begin < 0 || column < 0 || column >= digits.size()) return;
  constexpr int width = 3;  // two digits and a blank
  const qsizetype place = column / width;
  QTextEdit::ExtraSelection byte;
  byte.cursor = QTextCursor(at.block());
  byte.cursor.setPosition(at.block().position() + static_cast<int>(begin + place * width));
  byte.cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, width - 1);
  byte.format.setForeground(palette().highlightedText());
  byte.format.setBackground(palette().highlight());
  text_->setExtraSelections({byte});
  emit statusChanged(shownText(byteText(makeDecoder_(), line, static_cast<std::size_t>(place))));
}

void frmConsolePanel::copy() {
  if (text_->textCursor().hasSelection()) {
    text_->copy();
  } else {
    std::string text;
    auto writer = makeWriter();
    for (const ConsoleLine& line : view_.lines())
      text.append(writer.next(line)).append(1, '\n');
    QGuiApplication::clipboard()->setText(shownText(text));
  }
  emit statusChanged(tr("Copied."));
}

void frmConsolePanel::save() {
  const auto file = askTextFileToSave(this, tr("Save the console"), workFolder_ / "console.txt",
                                      tr("Text (*.txt)"));
  if (!file) return;
  const auto written = writeWholeFile(*file, log_.text(filter(), makeWriter()));
  emit statusChanged(written ? tr("Saved in %1").arg(shownText(file->string()))
                             : shownText(written.error().describe()));
}

void frmConsolePanel::findNext() {
  const QTextCursor at = text_->textCursor();
  const auto from = static_cast<std::size_t>(at.blockNumber()) + (at.hasSelection() ? 1 : 0);
  const auto found = findLine(view_.lines(), searched_->text().toStdString(), from);
  if (!found || searched_->text().isEmpty()) {
    emit statusChanged(tr("Nothing found."));
    return;
  }
  QTextCursor cursor(text_->document()->findBlockByNumber(static_cast<int>(*found)));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  text_->setTextCursor(cursor);
  text_->centerCursor();
}

bool frmConsolePanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonDblClick) emit doubleClicked();
  return QWidget::eventFilter(watched, event);
}

}  // namespace touch
