#pragma once

#include <QPushButton>

namespace touch {

/// A choice of calibration: its caption below a picture of where its targets are.
class TargetsButton final : public QPushButton {
  Q_OBJECT

 public:
  TargetsButton(const QString& caption, int targets, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int targets_;
};

}  // namespace touch
