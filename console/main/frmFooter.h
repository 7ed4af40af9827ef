#pragma once

#include <QWidget>

class QPushButton;

namespace touch {

class MainConsole;
class MainModel;

/// The main window's last row: help, the ways out, and while ports are searched the way to stop.
class frmFooter final : public QWidget {
  Q_OBJECT

 public:
  frmFooter(MainModel& model, MainConsole& console);

 private:
  void showWork();
  void showSearch(bool canBeStopped);

  const MainModel& model_;
  QPushButton* cancelSearch_;
  QPushButton* release_;
};

}  // namespace touch
