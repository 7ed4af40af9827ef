#include "console/doctor/findings_list.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "ui/controls/finger_style.h"
#include "ui/style/colours.h"
#include "ui/style/signs.h"
#include "ui/text.h"

namespace touch {

namespace {

enum Role { stateRole = Qt::UserRole + 1, headingRole, mendWidthRole };

constexpr int gap = 8;
constexpr int signSide = 20;
constexpr qreal cardRadius = 8;

QString wordFor(FindingState state) {
  switch (state) {
    case FindingState::problem:
      return FindingsList::tr("Problem");
    case FindingState::note:
      return FindingsList::tr("Note");
    case FindingState::ok:
      break;
  }
  return FindingsList::tr("In order");
}

QString headingFor(std::string_view topic) {
  const std::pair<std::string_view, QString> headings[] = {
      {"library", FindingsList::tr("Driver")},     {"controllers", FindingsList::tr("Controllers")},
      {"ports", FindingsList::tr("Serial ports")}, {"folder", FindingsList::tr("Working folder")},
      {"screens", FindingsList::tr("Screens")},    {"files", FindingsList::tr("Files")},
      {"versions", FindingsList::tr("Versions")},
  };
  const auto* const found =
      std::ranges::find(headings, topic, [](const auto& h) { return h.first; });
  return found == std::end(headings) ? QString() : found->second;
}

QString wordsOf(const Finding& finding) {
  QString text = wordFor(finding.state) + ": " + shownText(finding.what);
  if (!finding.why.empty()) text += '\n' + shownText(finding.why);
  if (!finding.nextStep.empty())
    text += '\n' + FindingsList::tr("Next: %1").arg(shownText(finding.nextStep));
  return text;
}

struct Look {
  QColor ink;
  QColor ground;
  QString letter{};  ///< empty: the sign
  Sign sign = Sign::tick;
};

Look lookOf(FindingState state, const Colours& colours) {
  switch (state) {
    case FindingState::problem:
      return {colours.problem, colours.problemSoft, {}, Sign::cross};
    case FindingState::note:
      return {colours.remark, colours.remarkSoft, "i"};
    case FindingState::ok:
      break;
  }
  return {colours.good, colours.card};
}

QFont boldened(QFont font) {
  font.setBold(true);
  return font;
}

/// Where the parts of a finding are.
struct Parts {
  QRect heading;  ///< empty: it has none
  QRect card;
  QRect first;  ///< line, which says what
  QRect rest;   ///< of the text; may be empty
  int bottom = 0;
};

Parts partsOf(const QStyleOptionViewItem& option, const QModelIndex& index, const QRect& place) {
  const bool isCard = index.data(stateRole).toInt() != static_cast<int>(FindingState::ok);
  const int inside = isCard ? gap : gap / 2;
  Parts parts;
  int top = place.top();
  if (!index.data(headingRole).toString().isEmpty()) {
    parts.heading = {place.left() + gap, top + gap, place.width() - 2 * gap,
                     QFontMetrics(boldened(option.font)).height()};
    top = parts.heading.bottom() + 1;
  }
  const QString text = index.data().toString();
  const int mendWidth = index.data(mendWidthRole).toInt();
  const int left = place.left() + 2 * gap + signSide;
  const int width = std::max(place.right() - left - gap - (mendWidth > 0 ? mendWidth + gap : 0),
                             2 * fingerSize());
  const auto measured = [&](const QFont& font, int from, const QString& words) {
    if (words.isEmpty()) return QRect(left, from, 0, 0);
    const QRect room(left, from, width, 1 << 14);
    const int height = QFontMetrics(font).boundingRect(room, Qt::TextWordWrap, words).height();
    return QRect(left, from, width, height);
  };
  const QFont firstFont = isCard ? boldened(option.font) : option.font;
  parts.first = measured(firstFont, top + inside, text.section('\n', 0, 0));
  parts.rest = measured(option.font, parts.first.bottom() + 1, text.section('\n', 1));
  const int textBottom = (parts.rest.isEmpty() ? parts.first : parts.rest).bottom();
  const int lowest = mendWidth > 0 ? std::max(textBottom, top + inside + fingerSize()) : textBottom;
  parts.bottom = std::max(lowest, top + inside + signSide) + inside;
  parts.card = QRect(QPoint(place.left(), top), QPoint(place.right(), parts.bottom));
  return parts;
}

class FindingRows final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const auto* const list = qobject_cast<const QListWidget*>(option.widget);
    if (list == nullptr) return {};
    const int width = list->viewport()->width() - 2 * list->spacing();
    return {width, partsOf(option, index, {0, 0, width, 0}).bottom + 1};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const Colours& colours = coloursOf(option.palette);
    const auto state = static_cast<FindingState>(index.data(stateRole).toInt());
    const Look look = lookOf(state, colours);
    const Parts parts = partsOf(option, index, option.rect);
    const bool isChosen = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(boldened(option.font));
    painter->setPen(colours.quiet);
    painter->drawText(parts.heading, Qt::AlignVCenter, index.data(headingRole).toString());

    painter->setPen(isChosen ? QPen(colours.accent, 2) : QPen(Qt::NoPen));
    painter->setBrush(look.ground);
    painter->drawRoundedRect(QRectF(parts.card).adjusted(1, 1, -1, -1), cardRadius, cardRadius);
    const QRectF sign(parts.card.left() + gap, parts.first.top(), signSide, signSide);
    drawState(*painter, sign, look, colours);

    const QString text = index.data().toString();
    const bool isCard = state != FindingState::ok;
    painter->setFont(isCard ? boldened(option.font) : option.font);
    painter->setPen(isCard ? look.ink : colours.text);
    painter->drawText(parts.first, Qt::TextWordWrap, text.section('\n', 0, 0));
    painter->setFont(option.font);
    painter->setPen(colours.text);
    painter->drawText(parts.rest, Qt::TextWordWrap, text.section('\n', 1));
    painter->restore();
  }

 private:
  static void drawState(QPainter& painter, const QRectF& place, const Look& look,
                        const Colours& colours) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.ink);
    painter.drawEllipse(place);
    constexpr int rim = 4;
    if (look.letter.isEmpty())
      return drawSign(painter, place.adjusted(rim, rim, -rim, -rim), look.sign, colours.card);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(qRound(place.height() * 3 / 4));
    painter.setFont(font);
    painter.setPen(colours.card);
    painter.drawText(place, Qt::AlignCenter, look.letter);
  }
};

}  // namespace

FindingsList::FindingsList(Mender mender) : mender_(std::move(mender)) {
  setItemDelegate(new FindingRows(this));
  setWordWrap(true);
  setTextElideMode(Qt::ElideNone);
  setResizeMode(QListView::Adjust);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setSpacing(2);
  setMinimumHeight(fingerSize());
}

void FindingsList::showAll(const std::vector<Finding>& findings) {
  clear();
  lastMend_ = this;
  std::string_view topic;
  for (const Finding& finding : findings) {
    auto* const item = new QListWidgetItem(wordsOf(finding), this);
    item->setData(stateRole, static_cast<int>(finding.state));
    if (finding.mend != Mend::none) addMend(*item, finding.mend);
    if (finding.state != FindingState::ok || finding.topic == topic) continue;
    topic = finding.topic;
    item->setData(headingRole, headingFor(topic));
    item->setData(Qt::AccessibleDescriptionRole, headingFor(topic));
  }
  setCurrentRow(0);
}

void FindingsList::addMend(QListWidgetItem& item, Mend mend) {
  auto* const place = new QWidget;
  auto* const row = new QHBoxLayout(place);
  row->setContentsMargins(gap, gap, gap, gap);
  row->addStretch();
  auto* const button = new QToolButton;
  button->setObjectName("cmdMend");
  const bool searches = mend == Mend::searchPorts;
  button->setText(searches ? tr("Search COM ports") : tr("Ask again"));
  button->setIcon(signIcon(searches ? Sign::search : Sign::refresh));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setAccessibleDescription(item.text());
  row->addWidget(button, 0, Qt::AlignVCenter);
  item.setData(mendWidthRole, button->sizeHint().width());
  setItemWidget(&item, place);
  setTabOrder(lastMend_, button);
  lastMend_ = button;
  // What it does replaces the list, and with that the button.
  connect(
      button, &QToolButton::clicked, this, [this, mend] { mender_(mend); }, Qt::QueuedConnection);
}

void FindingsList::keyPressEvent(QKeyEvent* event) {
  if (scrollWithin(event->key())) return;
  const int row = currentRow();
  QListWidget::keyPressEvent(event);
  // A page on may end within the next finding: the list would stay where it is.
  const int step = event->key() == Qt::Key_PageDown ? 1 : event->key() == Qt::Key_PageUp ? -1 : 0;
  if (step != 0 && currentRow() == row)
    setCurrentRow(std::clamp(row + step, 0, std::max(count() - 1, 0)));
}

bool FindingsList::scrollWithin(int key) {
  const bool down = key == Qt::Key_Down || key == Qt::Key_PageDown;
  const bool up = key == Qt::Key_Up || key == Qt::Key_PageUp;
  if (currentItem() == nullptr || (!down && !up)) return false;
  const QRect finding = visualItemRect(currentItem());
  const int hidden = down ? finding.bottom() - viewport()->rect().bottom() : -finding.top();
  if (hidden <= 0) return false;
  const bool byPage = key == Qt::Key_PageDown || key == Qt::Key_PageUp;
  const int line = fontMetrics().lineSpacing();
  const int step = std::min(hidden, byPage ? std::max(viewport()->height() - line, line) : line);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + (down ? step : -step));
  return true;
}

}  // namespace touch
