#include "serial/debugger/panels/frmPortsPanel.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/controls/finger_style.h"
#include "ui/text.h"

namespace touch {

namespace {

QString textOf(const PortFacts& facts) {
  const auto& [port, driver, maker, hindrance, state] = facts;
  QStringList behind;
  for (const std::string& fact : {maker, driver})
    if (!fact.empty()) behind.append(shownText(fact));
  const QString name = port.number > 0 ? QString("COM%1   %2").arg(port.number) : QString("%2");
  return name.arg(shownText(port.device)) + '\n' +
         (behind.isEmpty() ? QString() : behind.join(", ") + "; ") + shownText(state);
}

/// Rows that a finger hits, with room around their lines.
class PortRows final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    constexpr int room = 12;
    const QSize lines = QStyledItemDelegate::sizeHint(option, index);
    return {lines.width(), std::max(lines.height() + room, fingerSize())};
  }
};

}  // namespace

frmPortsPanel::frmPortsPanel(QWidget* parent)
    : QWidget(parent),
      list_(new QListWidget),
      use_(new QPushButton(tr("Open t&his port"))),
      search_(new QPushButton(tr("Find a contro&ller"))) {
  list_->setObjectName("listPorts");
  list_->setAccessibleName(tr("Serial ports of this machine"));
  list_->setWordWrap(true);
  list_->setItemDelegate(new PortRows(list_));
  list_->setTabKeyNavigation(false);
  list_->setMinimumHeight(2 * fingerSize());
  use_->setObjectName("cmdUsePort");
  search_->setObjectName("cmdSearchEverywhere");
  search_->setToolTip(tr("Asks on each port that can be opened, at all line settings"));
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(use_);
  buttons->addWidget(search_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(list_, 1);
  column->addLayout(buttons);
  connect(use_, &QPushButton::clicked, this, &frmPortsPanel::use);
  connect(search_, &QPushButton::clicked, this, [this] {
    if (state_ == State::searched) {
      emit stopRequested();
    } else {
      emit searchRequested();
    }
  });
}

QString frmPortsPanel::show(std::vector<PortFacts> ports, State state) {
  state_ = state;
  const bool searched = state == State::searched;
  use_->setEnabled(state == State::usable && !ports.empty());
  search_->setEnabled(searched || (state == State::usable && !ports.empty()));
  search_->setText(searched ? tr("Stop &looking") : tr("Find a contro&ller"));
  if (shown_ == ports) return {};
  QString plugged;
  for (const std::string& device : pluggedIn(shown_.value_or(ports), ports))
    plugged = tr("%1 was plugged in.").arg(shownText(device));
  const int row = list_->currentRow();
  const std::string before =
      row >= 0 && shown_ ? (*shown_)[static_cast<std::size_t>(row)].port.device : std::string();
  list_->clear();
  for (const PortFacts& facts : ports)
    list_->addItem(textOf(facts));
  int chosen = 0;
  for (std::size_t i = 0; i < ports.size(); ++i)
    if (ports[i].port.device == before) chosen = static_cast<int>(i);
  list_->setCurrentRow(ports.empty() ? -1 : chosen);
  shown_ = std::move(ports);
  return plugged;
}

void frmPortsPanel::use() {
  const int row = list_->currentRow();
  if (row < 0 || !shown_) return;
  const ListedPort port = (*shown_)[static_cast<std::size_t>(row)].port;
  emit chosen(port);
}

}  // namespace touch
