#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QSlider;

namespace touch {

class ReplayPort;

/// What a replay is held, moved and hurried with, and how far it has come. Shown while there is
/// one.
class frmReplayBar final : public QWidget {
  Q_OBJECT

 public:
  explicit frmReplayBar(QWidget* parent = nullptr);

  /// `replay` may be null; it has to be told here before it goes. To be called again and again.
  void show(ReplayPort* replay);

 signals:
  /// It goes on elsewhere.
  void sought();

 private:
  void seek();

  ReplayPort* replay_ = nullptr;
  QPushButton* pause_;
  QPushButton* step_;
  QSlider* place_;
  QLabel* time_;
  QComboBox* speed_;
};

}  // namespace touch
