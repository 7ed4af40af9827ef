#pragma once

#include <QListWidget>

namespace touch {

/// A list of commands to tap: rows that a finger hits, in as many columns as it takes to show all
/// of them.
class FingerList final : public QListWidget {
  Q_OBJECT

 public:
  explicit FingerList(QWidget* parent = nullptr);

  void setLines(const QStringList& lines);
  /// Takes its size for this room: in columns when they fit, else in one column that scrolls.
  void fitInto(const QSize& room);

 signals:
  /// Tapped, or Enter pressed.
  void chosen(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace touch
