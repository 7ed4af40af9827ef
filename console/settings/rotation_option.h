#pragma once

#include <QRadioButton>

namespace touch {

/// An option for the rotation: a picture of the screen turned so, and the angle below it.
class RotationOption final : public QRadioButton {
  Q_OBJECT

 public:
  RotationOption(const QString& caption, int quarterTurns, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// All of it can be pressed.
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

 private:
  int quarterTurns_;
};

}  // namespace touch
