#pragma once

#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace touch {

class MainConsole;
class MainModel;

/// The page "Controller": which controllers there are and what the chosen one says of itself.
class frmControllerPage final : public QWidget {
  Q_OBJECT

 public:
  frmControllerPage(MainModel& model, MainConsole& console);

  /// Buttons that are to be at hand without scrolling. For whoever shows the page.
  QWidget* actions() const { return actions_; }

 private:
  void setUpList(MainConsole& console);
  QWidget* makeActions(MainConsole& console);
  void showControllers();
  void showIdentity();
  void showInformation();

  const MainModel& model_;
  QTableWidget* controllerList_;
  QLabel* emptyHint_;
  QLabel* unitType_;
  QLabel* firmware_;
  QListWidget* infoList_;
  QPushButton* info_;
  QWidget* actions_;
};

}  // namespace touch
