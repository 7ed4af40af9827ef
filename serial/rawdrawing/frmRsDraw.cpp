#include "serial/rawdrawing/frmRsDraw.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QCursor>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "serial/recording/frmReplayBar.h"
#include "ui/controls/finger_list.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/guide/help.h"
#include "ui/screens/key_place.h"
#include "ui/text.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto rawDrawingRenewal = 100ms;
constexpr int gap = 8;
constexpr int noDrag = 6;  // pixels

TwipsPoint twips(const QPointF& place) {
  return {static_cast<float>(place.x()) * twipsPerPixel,
          static_cast<float>(place.y()) * twipsPerPixel};
}

}  // namespace

/// A ring around the dot whose bytes are marked.
class DotMarker final : public QWidget {
 public:
  explicit DotMarker(QWidget* parent) : QWidget(parent) {
    setObjectName("dotMarker");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(side, side);
    hide();
  }
  void markAt(TwipsPoint place) {
    move(QPointF(place.x / twipsPerPixel - side / 2.0F, place.y / twipsPerPixel - side / 2.0F)
             .toPoint());
    if (!isHidden()) return;
    show();
    raise();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::yellow, 2));
    painter.drawEllipse(rect().adjusted(2, 2, -2, -2));
  }

 private:
  static constexpr int side = 26;
};

frmRsDraw::frmRsDraw(const Parts& parts, ReceivingPort port, const QScreen& screen,
                     std::function<void()> onLeave)
    : FullScreenWindow(screen, parts.size, std::move(onLeave)),
      parts_(parts),
      canvas_(new CanvasWidget(this)),
      monitor_(new QPlainTextEdit),
      panel_(new QWidget(this)),
      counts_(new QLabel),
      notice_(new QLabel(spokenText("rawdrawing", rawDrawingNotice), this)),
      help_(new FingerList(this)),
      marker_(new DotMarker(this)),
      replayBar_(new frmReplayBar),
      timer_(parts_.clock.makeTimer([this] { renew(); })) {
  setObjectName("frmRsDraw");
  setWindowTitle(tr("Raw drawing"));
  setHelpChapter(*this, "Raw drawing");
  addHelpKey(*this, helpKeyWhereF1IsTaken);
  canvas_->setObjectName("rawCanvas");
  presentAsGraphic(*canvas_, tr("What the controller reports"),
                   tr("A dot for each report, joined by lines; the bytes stand in the monitor."));
  canvas_->setAttribute(Qt::WA_TransparentForMouseEvents);

  monitor_->setObjectName("Text1");
  monitor_->setAccessibleName(tr("Received bytes"));
  monitor_->setReadOnly(true);
  // While it rolls, all that it has dropped would be kept.
  monitor_->setUndoRedoEnabled(false);
  monitor_->setTabChangesFocus(true);
  monitor_->installEventFilter(this);
  connect(monitor_, &QPlainTextEdit::cursorPositionChanged, this, &frmRsDraw::markDotOfText);

  counts_->setObjectName("lblStray");
  notice_->setObjectName("lblNotice");
  notice_->setStyleSheet("color: white; background: #303030; padding: 6px");
  notice_->setAttribute(Qt::WA_TransparentForMouseEvents);
  makeHelp(parts_.messages);

  panel_->setObjectName("monitorPanel");
  panel_->setAutoFillBackground(true);
  auto* const column = new QVBoxLayout(panel_);
  column->setContentsMargins(gap, 2, gap, 2);
  column->setSpacing(2);
  column->addWidget(monitor_, 1);
  auto* const below = new QHBoxLayout;
  below->addWidget(counts_, 1);
  below->addWidget(
      makeCheck("checkRolling", tr("&Rolling"), [this](bool on) { drawing_->rollMonitor(on); }));
  column->addLayout(below);
  column->addWidget(replayBar_);
  column->addWidget(makeBar());
  replayBar_->show(parts_.replay);
  connect(replayBar_, &frmReplayBar::sought, this, [this] { drawing_->breakStroke(); });

  placeControls();
  const TwipsSize area = canvas_->sizeInTwips();
  drawing_ = std::make_unique<RawDrawing>(
      parts_.clock, std::move(port),
      RawDrawing::Canvas{*canvas_, area,
                         [this](PixelPoint place) {
                           QCursor::setPos(canvas_->mapToGlobal(QPoint(place.x, place.y)));
                         }},
      parts_.decoder);
  tools_ = std::make_unique<RawDrawingTools>(
      RawDrawingTools::Parts{*drawing_, *canvas_, parts_.prompt, parts_.messages, parts_.switches,
                             [this] { askToLeave(); }});
  setFocusPolicy(Qt::ClickFocus);
}

frmRsDraw::~frmRsDraw() = default;

QCheckBox* frmRsDraw::makeCheck(const char* name, const QString& caption,
                                const std::function<void(bool)>& switched) {
  auto* const check = new QCheckBox(caption);
  check->setObjectName(name);
  check->installEventFilter(this);
  connect(check, &QCheckBox::toggled, this, switched);
  return check;
}

QPushButton* frmRsDraw::makeButton(const char* name, const QString& caption,
                                   const std::function<void()>& action) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->installEventFilter(this);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

QWidget* frmRsDraw::makeBar() {
  auto* const shown = makeCheck("checkMonitor", tr("Mo&nitor"), [this](bool on) {
    monitor_->setVisible(on);
    placeControls();
  });
  {
    const QSignalBlocker silent(shown);
    shown->setChecked(true);
  }
  auto* const hide = makeButton("cmdHideBars", tr("&Hide (F2)"), [this] { toggleBars(); });
  hide->setToolTip(tr("F2 or the right mouse button shows monitor and bars again"));
  const std::initializer_list<QWidget*> streaming = {
      shown,
      makeCheck("checkFollow", tr("Fo&llow"),
                [this](bool on) { drawing_->options.followCursor = on; }),
      makeCheck("checkMonitorOnly", tr("Monitor &only"),
                [this](bool on) { drawing_->options.monitorOnly = on; }),
      makeCheck("checkPause", tr("Pa&use"), [this](bool on) { drawing_->options.paused = on; }),
  };
  const std::initializer_list<QWidget*> showing = {
      makeCheck("checkFit", tr("F&it"), [this](bool on) { drawing_->fit(on); }),
      makeButton("cmdWipe", tr("&Wipe"),
                 [this] {
                   drawing_->clearMonitor();
                   renewMonitor();
                   shownDecided_ = 0;
                   marked_.reset();
                   perform(CanvasAction::clear);
                 }),
      makeButton("cmdHelp", tr("&Keys"), [this] { perform(CanvasAction::toggleHelp); }),
      hide,
      makeButton("cmdLeave", tr("Lea&ve"), [this] { askToLeave(); }),
  };
  auto* const bar = new QWidget;
  auto* const rows = new QBoxLayout(QBoxLayout::LeftToRight, bar);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(isSmallScreen() ? 2 : 6);
  for (const auto& row : {streaming, showing}) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(rows->spacing());
    for (QWidget* const control : row)
      line->addWidget(control);
    rows->addLayout(line);
  }
  // In one row where the captions leave room for it.
  if (rows->sizeHint().width() + 2 * gap > width()) rows->setDirection(QBoxLayout::TopToBottom);
  return bar;
}

void frmRsDraw::makeHelp(const MessageTable& messages) {
  help_->setObjectName("helpPanel");
  help_->setAccessibleName(spokenText("rawdrawing", rawDrawingNotice));
  const auto lines = rawDrawingHelp(messages);
  QStringList texts;
  for (const RawDrawingHelp& line : lines)
    texts.append(shownText(line.text));
  help_->setLines(texts);
  help_->hide();
  help_->installEventFilter(this);
  connect(help_, &FingerList::chosen, this,
          [this, lines](int row) { perform(lines[static_cast<std::size_t>(row)].action); });
}

void frmRsDraw::started() {
  setFocus();
  placeControls();
  tools_->activate();
  drawing_->start();
  timer_->start(rawDrawingRenewal);
}

void frmRsDraw::resizeEvent(QResizeEvent*) {
  placeControls();
}

/// Letters with which a line of five reports fits, unless they would be too small to read.
void frmRsDraw::fitMonitorFont() {
  constexpr int charactersInLine = 112;
  constexpr qreal leastPoints = 7;
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  const int room = width() - 2 * gap - style()->pixelMetric(QStyle::PM_ScrollBarExtent) - gap;
  while (font.pointSizeF() > leastPoints &&
         QFontMetrics(font).horizontalAdvance('0') * charactersInLine > room) {
    font.setPointSizeF(font.pointSizeF() - 0.5);
  }
  monitor_->setFont(font);
}

void frmRsDraw::placeControls() {
  fitMonitorFont();
  monitor_->setMinimumHeight(height() / (isSmallScreen() ? 6 : 4));
  const int panelHeight = panel_->isHidden() ? 0 : panel_->minimumSizeHint().height();
  const int free = height() - panelHeight;
  panel_->setGeometry(0, free, width(), panelHeight);
  canvas_->setGeometry(0, 0, width(), free);
  // Before it is shown there is nothing to draw on.
  if (canvas_->isVisible()) drawing_->resize(canvas_->sizeInTwips());
  notice_->adjustSize();
  notice_->move((width() - notice_->width()) / 2, (free - notice_->height()) / 2);
  help_->move(gap, gap);
  const int besideHelp = isSmallScreen() ? 0 : panelHeight;
  help_->fitInto(QSize(width() - 2 * gap, height() - besideHelp - 2 * gap));
  help_->raise();
}

void frmRsDraw::toggleBars() {
  panel_->setVisible(panel_->isHidden());
  placeControls();
  setFocus();
}

void frmRsDraw::perform(CanvasAction action) {
  tools_->perform(action);
  help_->setVisible(tools_->helpIsShown());
  help_->raise();  // over a dot that was marked meanwhile
  const bool mayClear = action == CanvasAction::clear || action == CanvasAction::escape ||
                        action == CanvasAction::toggleGrid;
  if (mayClear) marker_->hide();
}

bool frmRsDraw::eventFilter(QObject* watched, QEvent* event) {
  // The hot keys work wherever the focus is.
  return (event->type() == QEvent::KeyPress && takeHotKey(*static_cast<QKeyEvent*>(event))) ||
         QWidget::eventFilter(watched, event);
}

void frmRsDraw::keyPressEvent(QKeyEvent* event) {
  if (!takeHotKey(*event)) QWidget::keyPressEvent(event);
}

bool frmRsDraw::takeHotKey(const QKeyEvent& key) {
  if (key.key() == Qt::Key_F2 && key.modifiers() == Qt::NoModifier) {
    if (!key.isAutoRepeat()) toggleBars();
    return true;
  }
  const auto action = canvasActionOf(key);
  // A key that is held would clear and then leave.
  if (action && !key.isAutoRepeat()) perform(*action);
  return action.has_value();
}

void frmRsDraw::touchAt(const QPointF& place) {
  if (!parts_.simulation.isThere()) return;
  parts_.simulation.touch(std::clamp(place.x() / canvas_->width(), 0.0, 1.0),
                          std::clamp(place.y() / canvas_->height(), 0.0, 1.0));
}

void frmRsDraw::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) toggleBars();
  if (event->button() != Qt::LeftButton) return;
  pressed_ = event->position();
  touchAt(pressed_);
}

void frmRsDraw::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons().testFlag(Qt::LeftButton)) touchAt(event->position());
}

void frmRsDraw::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  parts_.simulation.lift();
  if ((event->position() - pressed_).manhattanLength() <= noDrag) markBytesAt(pressed_);
}

void frmRsDraw::markBytesAt(const QPointF& place) {
  renewMonitor();
  marked_ = drawing_->bytesOfDotAt(twips(place));
  marker_->hide();
  if (marked_) {
    const QSignalBlocker silent(monitor_);
    QTextCursor cursor(monitor_->document());
    cursor.setPosition(static_cast<int>(marked_->begin));
    monitor_->setTextCursor(cursor);
    monitor_->ensureCursorVisible();
    moveMarker();
  }
  showHighlights();
}

// The drawing may have been drawn anew on another scale.
void frmRsDraw::moveMarker() {
  const auto dot = marked_ ? drawing_->dotOfTextAt(marked_->begin) : std::nullopt;
  dot ? marker_->markAt(*dot) : marker_->hide();
}

void frmRsDraw::markDotOfText() {
  renewMonitor();
  const auto position = static_cast<std::size_t>(monitor_->textCursor().position());
  const auto dot = drawing_->dotOfTextAt(position);
  marked_ = dot ? drawing_->bytesOfDotAt(*dot) : std::nullopt;
  moveMarker();
  showHighlights();
}

void frmRsDraw::renew() {
  notice_->setVisible(drawing_->noticeIsUp());
  renewMonitor();
  replayBar_->show(parts_.replay);
  const ReportDecoder& decoder = drawing_->decoder();
  QString counts = tr("Reports: %1     Unrecognised bytes: %2")
                       .arg(drawing_->reports())
                       .arg(decoder.strayBytes());
  if (drawing_->monitor().isFull())
    counts += "     " + tr("The monitor is full; \"Wipe\" empties it.");
  if (marked_) {
    const auto position = static_cast<std::size_t>(monitor_->textCursor().position());
    if (const auto field = drawing_->fieldOfTextAt(position); !field.empty())
      counts += "     " + shownText(field);
  }
  counts_->setText(counts);
  if (!marker_->isHidden()) moveMarker();
  // Behind what the monitor shows nothing can be coloured.
  const std::uint64_t decided = std::min(decoder.decided(), drawing_->monitor().endOffset());
  if (decided == shownDecided_) return;
  shownDecided_ = decided;
  showHighlights();
}

void frmRsDraw::renewMonitor() {
  const HexMonitor& held = drawing_->monitor();
  const std::string_view text = held.text();
  const std::uint64_t begin = held.dropped();
  const std::uint64_t end = begin + text.size();
  if (begin == shownBegin_ && end == shownEnd_) return;
  auto* const bar = monitor_->verticalScrollBar();
  const bool followed = bar->value() >= bar->maximum();
  const QSignalBlocker silent(monitor_);
  dropShown(static_cast<int>(std::min(begin, shownEnd_) - shownBegin_));
  QTextCursor cursor(monitor_->document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(shownText(text.substr(std::max(shownEnd_, begin) - begin)));
  shownBegin_ = begin;
  shownEnd_ = end;
  if (followed) bar->setValue(bar->maximum());
}

void frmRsDraw::dropShown(int count) {
  if (count == 0) return;
  auto* const bar = monitor_->verticalScrollBar();
  const int lines = monitor_->blockCount();
  const int place = bar->value();
  QTextCursor cursor(monitor_->document());
  cursor.setPosition(count, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  // Whoever has scrolled back reads on.
  bar->setValue(place - (lines - monitor_->blockCount()));
  if (!marked_) return;
  const auto gone = static_cast<std::size_t>(count);
  if (marked_->begin < gone) {
    marked_.reset();
    marker_->hide();
  } else {
    marked_ = TextRange{marked_->begin - gone, marked_->end - gone};
  }
}

void frmRsDraw::showHighlights() {
  QList<QTextEdit::ExtraSelection> selections;
  const auto add = [&](const TextRange& range, const QColor& ink, const QColor& paper) {
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(monitor_->document());
    const int last = monitor_->document()->characterCount() - 1;
    selection.cursor.setPosition(std::min(static_cast<int>(range.begin), last));
    selection.cursor.setPosition(std::min(static_cast<int>(range.end), last),
                                 QTextCursor::KeepAnchor);
    selection.format.setForeground(ink);
    selection.format.setBackground(paper);
    selections.append(selection);
  };
  for (const TextRange& range : drawing_->strayText())
    add(range, Qt::white, QColor("#b00020"));
  if (marked_) add(*marked_, Qt::black, QColor("#ffd54a"));
  monitor_->setExtraSelections(selections);
}

void frmRsDraw::askToLeave() {
  timer_->stop();
  drawing_->stop();
  parts_.simulation.lift();
  leave();
}

}  // namespace touch
