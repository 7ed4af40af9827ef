#pragma once

#include <QWidget>

#include "support/notice.h"

class QLabel;

namespace touch {

/// A line of a window that says what has just happened. Success, remark and error differ in their
/// icon and first word.
class StatusLine final : public QWidget {
  Q_OBJECT

 public:
  explicit StatusLine(QWidget* parent = nullptr);

  /// An empty text leaves the line empty.
  void show(const Notice& status);
  /// What is being waited for: no outcome yet.
  void showWait(const QString& what);

 private:
  QLabel* icon_;
  QLabel* text_;
};

}  // namespace touch
