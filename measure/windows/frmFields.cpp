#include "measure/windows/frmFields.h"

#include <QFormLayout>
#include <QLabel>

#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"

namespace touch::measure {

FingerSpinBox* makePanelLength(const char* name, const QString& says) {
  constexpr double smallest = 20;
  constexpr double largest = 3000;
  auto* const length = new FingerSpinBox(name, says);
  length->box().setRange(smallest, largest);
  length->box().setDecimals(1);
  length->box().setSuffix(" mm");
  return length;
}

void addField(QFormLayout& form, const QString& caption, QWidget* field, QWidget* buddy) {
  auto* const label = new QLabel(caption);
  label->setBuddy(buddy);
  label->setMinimumHeight(fingerSize());
  form.addRow(label, field);
}

}  // namespace touch::measure
