#pragma once

#include <QWidget>

#include "console/parameters/parameter_editor.h"

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace touch {

class Actions;
class MainModel;

/// The page "Parameters": the eight words of the parameter block, high and low byte, old beside
/// new.
class frmParametersPage final : public QWidget {
  Q_OBJECT

 public:
  frmParametersPage(MainModel& model, Actions& actions, ParameterEditor& editor,
                    std::filesystem::path workFolder);

  /// What is done with the controller: buttons that are to be at hand without scrolling. For
  /// whoever shows the page.
  QWidget* actions() const { return actions_; }

 private:
  QWidget* makeBaseSwitch();
  struct Action;
  QWidget* makeButtons(std::initializer_list<Action> actions);
  QWidget* makeFileButtons();
  QWidget* makeActions();
  /// Puts what the editor holds into the table.
  void fill();
  void fillByte(int row, int column);
  void edited(int row, int column);
  void load();
  void save();
  void compare();

  Actions& commands_;
  ParameterEditor& editor_;
  std::filesystem::path workFolder_;
  QTableWidget* table_;
  QPushButton* undo_;
  QWidget* actions_;
};

}  // namespace touch
