#pragma once

#include <QWidget>

class QComboBox;

namespace touch {

/// Which monitor the panel covers: a list of those that are connected, what shows their numbers on
/// them, and what assigns one.
class frmMonitorRow final : public QWidget {
  Q_OBJECT

 public:
  explicit frmMonitorRow(QWidget* parent = nullptr);

 signals:
  void assigned(int monitor);  ///< counted from 1

 private:
  void fill();

  QComboBox* monitors_;
};

}  // namespace touch
