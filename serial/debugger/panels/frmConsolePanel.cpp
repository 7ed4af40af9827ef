#include "serial/debugger/panels/frmConsolePanel.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QScroller>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTimer>
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

/// One line over the console's columns, which stays while these scroll up and goes along sideways.
class ColumnHeading final : public QWidget {
 public:
  void setText(const QString& text, const QPoint& begin) {
    setAccessibleName(text);
    begin_ = begin;
    setFixedHeight(fontMetrics().height() + begin.y());
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.drawText(QPoint(begin_.x(), fontMetrics().ascent()), accessibleName());
  }

 private:
  QPoint begin_;
};

frmConsolePanel::frmConsolePanel(ConsoleLog& log, const std::filesystem::path& workFolder,
                                 std::function<ReportDecoder()> makeDecoder, QWidget* parent)
    : QWidget(parent),
      log_(log),
      workFolder_(workFolder),
      makeDecoder_(std::move(makeDecoder)),
      text_(new QPlainTextEdit),
      bar_(new QScrollBar(Qt::Vertical)),
      columns_(new ColumnHeading),
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
  text_->setUndoRedoEnabled(false);
  text_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  text_->installEventFilter(this);
  text_->viewport()->installEventFilter(this);
  QScroller::grabGesture(text_->viewport(), QScroller::TouchGesture);
  connect(QScroller::scroller(text_->viewport()), &QScroller::stateChanged, this,
          &frmConsolePanel::settleSoon);
  connect(text_->verticalScrollBar(), &QScrollBar::valueChanged, this, &frmConsolePanel::takePlace);
  // Its page keys move it without a word from its bar.
  connect(text_, &QPlainTextEdit::updateRequest, this, [this](const QRect&, int moved) {
    if (moved != 0) takePlace();
  });
  connect(text_->horizontalScrollBar(), &QScrollBar::valueChanged, this,
          &frmConsolePanel::showColumns);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  connect(text_, &QPlainTextEdit::cursorPositionChanged, this, &frmConsolePanel::markByte);
  connect(text_, &QPlainTextEdit::cursorPositionChanged, this, &frmConsolePanel::keepCursor);
  connect(text_, &QPlainTextEdit::selectionChanged, this, &frmConsolePanel::keepCursor);

  bar_->setObjectName("keptLinesBar");
  bar_->setAccessibleName(tr("Place among all lines"));
  bar_->setSingleStep(3);  // lines, as many as a wheel's step
  QSizePolicy room = bar_->sizePolicy();
  room.setRetainSizeWhenHidden(true);
  bar_->setSizePolicy(room);
  connect(bar_, &QScrollBar::valueChanged, this, &frmConsolePanel::scrollTo);

  columns_->setObjectName("columnHeading");
  columns_->setFont(text_->font());
  columns_->setToolTip(tr("Direction: > sent, < received, = a touch report"));
  showColumns();

  pause_->setObjectName("checkPauseView");
  pause_->setToolTip(tr("Recording goes on meanwhile"));
  connect(pause_, &QCheckBox::toggled, this, [this](bool on) {
    log_.pause(on);
    renew();
  });
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(columns_);
  auto* const row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(text_, 1);
  row->addWidget(bar_);
  layout->addLayout(row, 1);
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
    showColumns();
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
  showChange();
}

void frmConsolePanel::showChange() {
  const auto change = view_.takeChange();
  if (change.anew) {
    showAll();
  } else if (change.added > 0) {
    showLast(std::min(change.added, view_.lines().size()));
  }
  showPlace();
}

void frmConsolePanel::showAll() {
  {
    const QScopedValueRollback writing(writing_, true);
    const QSignalBlocker silentText(text_);
    const int across = text_->horizontalScrollBar()->value();
    text_->clear();
    writer_ = makeWriter();
    showLast(view_.lines().size());
    if (!view_.isFollowing()) {
      QTextCursor at(text_->document());
      at.setPosition(positionOf(anchor_));
      at.setPosition(positionOf(cursor_), QTextCursor::KeepAnchor);
      text_->setTextCursor(at);
    }
    scrollToLine(view_.isFollowing() ? view_.lines().size() : view_.indexOf(view_.place()));
    text_->horizontalScrollBar()->setValue(across);
    // What is marked has been said.
    const QSignalBlocker silent(this);
    markByte();
  }
  keepCursor();
  followAtEnd();
}

void frmConsolePanel::followAtEnd() {
  if (isAtEnd() && view_.reachesEnd()) view_.follow();
}

bool frmConsolePanel::isAtEnd() const {
  const auto* const bar = text_->verticalScrollBar();
  return bar->value() >= bar->maximum();
}

void frmConsolePanel::showLast(std::size_t count) {
  {
    const QScopedValueRollback writing(writing_, true);
    // In one step, so that the text is laid out once and not for each line.
    QTextCursor cursor(text_->document());
    cursor.beginEditBlock();
    const auto& lines = view_.lines();
    for (std::size_t i = lines.size() - count; i < lines.size(); ++i)
      append(cursor, lines[i]);
    cursor.endEditBlock();
    if (view_.isFollowing()) scrollToLine(lines.size());
  }
  keepCursor();
}

void frmConsolePanel::scrollToLine(std::size_t index) {
  const QScopedValueRollback writing(writing_, true);
  auto* const bar = text_->verticalScrollBar();
  const QTextBlock block = text_->document()->findBlockByNumber(static_cast<int>(index));
  bar->setValue(block.isValid() ? block.firstLineNumber() : bar->maximum());
}

void frmConsolePanel::showColumns() {
  constexpr int below = 2;
  const auto margin = static_cast<int>(text_->frameWidth() + text_->document()->documentMargin());
  columns_->setText(shownText(makeWriter().heading()),
                    {margin - text_->horizontalScrollBar()->value(), below});
}

void frmConsolePanel::showPlace() {
  if (bar_->isSliderDown()) return;
  const QSignalBlocker silent(bar_);
  const KeptLines& kept = log_.kept();
  const int page = std::max(1, text_->viewport()->height() / text_->fontMetrics().lineSpacing());
  const int all = static_cast<int>(kept.size());
  bar_->setPageStep(page);
  bar_->setRange(0, std::max(0, all - page));
  bar_->setVisible(bar_->maximum() > 0);
  if (view_.isFollowing()) return bar_->setValue(bar_->maximum());
  const std::uint64_t top = std::clamp(topNumber(), kept.begin(), kept.end());
  bar_->setValue(static_cast<int>(top - kept.begin()));
}

std::uint64_t frmConsolePanel::topNumber() const {
  const auto index = static_cast<std::size_t>(text_->cursorForPosition({0, 0}).blockNumber());
  const auto& lines = view_.lines();
  return lines.empty() ? log_.kept().end() : view_.numberOf(std::min(index, lines.size() - 1));
}

void frmConsolePanel::takePlace() {
  if (writing_) return;
  if (isAtEnd() && view_.reachesEnd()) {
    view_.follow();
  } else {
    view_.standAt(topNumber());
  }
  settleSoon();
}

void frmConsolePanel::settleSoon() {
  if (std::exchange(settling_, true)) return;
  QTimer::singleShot(0, this, [this] { settle(); });
}

bool frmConsolePanel::isHeld() const {
  // Whoever drags or throws the text holds it by the lines that it has.
  return pressed_ || QScroller::scroller(text_->viewport())->state() != QScroller::Inactive;
}

void frmConsolePanel::settle() {
  settling_ = false;
  if (isHeld()) return;
  if (std::exchange(toEnd_, false)) return goToEnd();
  view_.slide();
  renew();
  if (view_.isLooking()) emit moreWanted();
}

void frmConsolePanel::goTo(std::uint64_t number) {
  toEnd_ = false;
  view_.standAt(number);
  view_.slide();
  showChange();
  scrollToLine(view_.indexOf(number));
  followAtEnd();
  showPlace();
  if (view_.isLooking()) emit moreWanted();
}

void frmConsolePanel::goToEnd() {
  view_.follow();
  renew();
  scrollToLine(view_.lines().size());
  if (view_.isLooking()) emit moreWanted();
}

void frmConsolePanel::scrollTo(int value) {
  if (value >= bar_->maximum()) return goToEnd();
  std::uint64_t number = log_.kept().begin() + static_cast<std::uint64_t>(value);
  const std::uint64_t top = topNumber();
  // A step back over lines that are not shown goes to the one before them.
  if (const std::size_t next = view_.indexOf(number);
      number < top && next > 0 && next < view_.lines().size() && view_.numberOf(next) >= top)
    number = view_.numberOf(next - 1);
  goTo(number);
}

bool frmConsolePanel::takeKey(const QKeyEvent& key) {
  const bool isPlain = (key.modifiers() & ~(Qt::ControlModifier | Qt::KeypadModifier)) == 0;
  if (!isPlain || (key.key() != Qt::Key_Home && key.key() != Qt::Key_End)) return false;
  const bool first = key.key() == Qt::Key_Home;
  first ? goTo(log_.kept().begin()) : goToEnd();
  const QScopedValueRollback writing(writing_, true);
  text_->moveCursor(first ? QTextCursor::Start : QTextCursor::End);
  cursor_ = anchor_ = placeAt(text_->textCursor().position());
  return true;
}

frmConsolePanel::TextPlace frmConsolePanel::placeAt(int position) const {
  const QTextBlock block = text_->document()->findBlock(position);
  const auto index = static_cast<std::size_t>(block.blockNumber());
  if (!block.isValid() || index >= view_.lines().size()) return {};
  return {view_.numberOf(index), position - block.position()};
}

int frmConsolePanel::positionOf(const TextPlace& place) const {
  const auto index = static_cast<int>(view_.indexOf(place.line));
  const QTextBlock block = text_->document()->findBlockByNumber(index);
  if (!block.isValid()) return text_->document()->characterCount() - 1;
  const bool isThere = view_.numberOf(static_cast<std::size_t>(index)) == place.line;
  return block.position() + (isThere ? std::min(place.column, block.length() - 1) : 0);
}

void frmConsolePanel::keepCursor() {
  if (writing_) return;
  cursor_ = placeAt(text_->textCursor().position());
  anchor_ = placeAt(text_->textCursor().anchor());
}

ConsoleWriter frmConsolePanel::makeWriter() const {
  return {static_cast<ConsoleTimes>(times_->currentIndex()), log_.started()};
}

void frmConsolePanel::append(QTextCursor& cursor, const ConsoleLine& line) {
  cursor.movePosition(QTextCursor::End);
  if (text_->document()->characterCount() > 1) cursor.insertBlock();
  // A note of several lines stays one block: blocks are counted as lines.
  cursor.insertText(shownText(writer_.nextInColumns(line)).replace('\n', QChar::LineSeparator),
                    formatOf(line.kind, palette()));
}

void frmConsolePanel::markByte() {
  if (!text_->extraSelections().isEmpty()) text_->setExtraSelections({});
  const QTextCursor at = text_->textCursor();
  const auto number = static_cast<std::size_t>(at.blockNumber());
  if (number >= view_.lines().size() || view_.lines()[number].bytes.empty()) return;
  const ConsoleLine& line = view_.lines()[number];
  const QString digits = QString::fromStdString(hexText(line.bytes));
  const qsizetype sign = at.block().text().indexOf(QRegularExpression("[<>=]"));
  const qsizetype begin = at.block().text().indexOf(digits, std::max<qsizetype>(sign, 0));
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
  const std::uint64_t lineNumber = view_.numberOf(number);
  const auto inLine = static_cast<std::size_t>(place);
  // What is seen may be older than all that is kept.
  const bool isKept = lineNumber >= log_.kept().begin() && lineNumber < log_.kept().end();
  emit statusChanged(shownText(isKept ? byteText(makeDecoder_(), log_.kept(), lineNumber, inLine)
                                      : byteText(makeDecoder_(), line, inLine)));
}

void frmConsolePanel::copy() {
  if (text_->textCursor().hasSelection()) {
    text_->copy();
  } else {
    std::string text;
    auto writer = makeWriter();
    for (const ConsoleLine& line : view_.lines())
      text.append(writer.nextInColumns(line)).append(1, '\n');
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
  const bool isUnderWay = search_ && search_->isLooking();
  const QTextCursor at = text_->textCursor();
  const std::uint64_t from = placeAt(at.position()).line + (at.hasSelection() ? 1 : 0);
  ConsoleFilter wanted = filter();
  wanted.containing = searched_->text().toStdString();
  search_.emplace(log_, std::move(wanted), from);
  if (!isUnderWay) findOn();
}

void frmConsolePanel::findOn() {
  if (searched_->text().isEmpty()) {
    search_.reset();
  } else if (search_->look(); search_->isLooking()) {
    emit statusChanged(tr("Searching …"));
    QTimer::singleShot(0, this, [this] { findOn(); });
    return;
  }
  const auto found = search_ ? search_->found() : std::nullopt;
  if (!found) {
    emit statusChanged(tr("Nothing found."));
    return;
  }
  if (const std::size_t index = view_.indexOf(*found);
      index >= view_.lines().size() || view_.numberOf(index) != *found)
    goTo(*found);
  QTextCursor cursor(text_->document()->findBlockByNumber(static_cast<int>(view_.indexOf(*found))));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  text_->setTextCursor(cursor);
  text_->centerCursor();
}

bool frmConsolePanel::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      if (watched == text_ && takeKey(*static_cast<QKeyEvent*>(event))) return true;
      break;
    case QEvent::MouseButtonPress:
      // The menu of the other button takes its release.
      pressed_ = static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
      break;
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
    case QEvent::Hide:
      pressed_ = false;
      settleSoon();
      break;
    case QEvent::MouseButtonDblClick:
      emit doubleClicked();
      break;
    case QEvent::Resize:
      // Lines that wrap anew move the end away.
      toEnd_ = toEnd_ || view_.isFollowing();
      settleSoon();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace touch
