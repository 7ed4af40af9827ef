#pragma once

#include <QDoubleSpinBox>
#include <QWidget>

namespace touch {

/// A number with a minus and a plus beside it that a finger hits, for screens without a keyboard.
class FingerSpinBox final : public QWidget {
  Q_OBJECT

 public:
  /// `name` is the box's objectName; the buttons are called "NameLess" and "NameMore".
  FingerSpinBox(const QString& name, const QString& accessibleName, QWidget* parent = nullptr);

  QDoubleSpinBox& box() { return *box_; }
  double value() const { return box_->value(); }

 private:
  QDoubleSpinBox* box_;
};

}  // namespace touch
