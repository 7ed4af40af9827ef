#include "measure/windows/frmGuideBox.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "measure/windows/frmVerdict.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"

namespace touch::measure {

namespace {
constexpr int margin = 8;
constexpr const char* boxGround = "#f4f4f4";
}  // namespace

frmGuideBox::frmGuideBox(const char* name, const char* titleName, const char* instructionName,
                         QWidget* parent)
    : QFrame(parent),
      head_(new QWidget(this)),
      title_(new QLabel),
      outcome_(new QLabel),
      drawing_(new QLabel(this)),
      instruction_(new QLabel(this)),
      grid_(new QGridLayout(this)) {
  setObjectName(name);
  setStyleSheet(QString("touch--measure--frmGuideBox { background: ") + boxGround +
                "; border: 1px solid #808080; "
                "border-radius: 4px } QLabel { color: black }");
  title_->setObjectName(titleName);
  QFont bold = font();
  bold.setBold(true);
  title_->setFont(bold);
  title_->setWordWrap(true);
  outcome_->setObjectName("outcome");
  outcome_->setFont(resized(bold, 1.3));
  outcome_->setMargin(3);
  outcome_->hide();
  auto* const row = new QHBoxLayout(head_);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(title_, 1);
  row->addWidget(outcome_, 0, Qt::AlignTop);
  drawing_->setObjectName("drawing");
  drawing_->hide();
  instruction_->setObjectName(instructionName);
  instruction_->setWordWrap(true);
  instruction_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  grid_->setContentsMargins(margin, margin, margin, margin);
  grid_->setSpacing(isSmallScreen() ? 3 : 6);
}

void frmGuideBox::showOutcome(std::optional<Outcome> outcome) {
  isJudged_ = outcome.has_value();
  outcome_->setVisible(isJudged_);
  if (!outcome) return;
  outcome_->setText(wordOf(*outcome));
  // The box is light, whatever the theme.
  const QColor ground = outcomeColour(*outcome, QPalette(QColor(boxGround)));
  outcome_->setStyleSheet("background: " + ground.name() + "; color: white; border-radius: 4px");
}

void frmGuideBox::fit(int width) {
  outcome_->setVisible(isJudged_);
  const int needed = title_->minimumSizeHint().width() + outcome_->sizeHint().width() + 4 * margin;
  if (needed > width) outcome_->hide();
  head_->layout()->activate();
  resize(width, grid_->totalHeightForWidth(width));
}

void frmGuideBox::showDrawing(const QString& name, const QString& description) {
  drawing_->setVisible(!name.isEmpty());
  if (!name.isEmpty()) touch::showDrawing(*drawing_, name, tr("How it is done"), description);
}

QPushButton* frmGuideBox::addButton(const char* name, const QString& caption, const QString& hint,
                                    std::function<void()> action) {
  auto* const button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setToolTip(hint);
  makeFingerSized(*button);
  connect(button, &QPushButton::clicked, this, std::move(action));
  buttons_.push_back(button);
  return button;
}

}  // namespace touch::measure
