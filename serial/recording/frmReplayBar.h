#pragma once

#include <QWidget>

#include "serial/recording/recording_ports.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;

namespace touch {

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
  QPushButton* makeLeap(const char* name, const QString& caption, const QString& toolTip,
                        ReplayPort::Time by);
  void seek(ReplayPort::Time time);
  void seekTyped();
  void showPlace();

  ReplayPort* replay_ = nullptr;
  QPushButton* pause_;
  QPushButton* step_;
  QSlider* place_;
  QLabel* time_;
  QLineEdit* typed_;
  QComboBox* speed_;
};

}  // namespace touch
