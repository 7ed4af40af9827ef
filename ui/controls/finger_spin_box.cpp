#include "ui/controls/finger_spin_box.h"

#include <QHBoxLayout>
#include <QToolButton>

#include "ui/controls/finger_style.h"

namespace touch {

FingerSpinBox::FingerSpinBox(const QString& name, const QString& accessibleName, QWidget* parent)
    : QWidget(parent), box_(new QDoubleSpinBox) {
  box_->setObjectName(name);
  box_->setAccessibleName(accessibleName);
  box_->setButtonSymbols(QAbstractSpinBox::NoButtons);
  box_->setAlignment(Qt::AlignCenter);
  makeFingerSized(*box_);
  setFocusProxy(box_);

  const auto button = [&](const QString& caption, const QString& suffix, const QString& says,
                          void (QDoubleSpinBox::*step)()) {
    auto* const made = new QToolButton;
    made->setObjectName(name + suffix);
    made->setText(caption);
    made->setAccessibleName(says.arg(accessibleName));
    made->setAutoRepeat(true);
    made->setFocusPolicy(Qt::NoFocus);  // by keyboard the box itself steps, with the arrow keys
    makeFingerSized(*made);
    connect(made, &QToolButton::clicked, box_, step);
    return made;
  };
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  row->addWidget(button("\u2212", "Less", tr("%1: less"), &QDoubleSpinBox::stepDown));
  row->addWidget(box_, 1);
  row->addWidget(button("+", "More", tr("%1: more"), &QDoubleSpinBox::stepUp));
}

}  // namespace touch
