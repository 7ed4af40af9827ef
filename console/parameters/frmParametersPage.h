#pragma once

#include <QWidget>

#include "console/parameters/parameter_editor.h"

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace touch {

/// The page "Parameters": the eight words of the parameter block, high and low byte, old beside
/// new.
class frmParametersPage final : public QWidget {
  Q_OBJECT

 public:
  frmParametersPage(ParameterEditor& editor, std::filesystem::path workFolder,
                    QWidget* parent = nullptr);

  /// Puts what the editor holds into the table.
  void fill();
  /// What is done with the controller: buttons that are to be at hand without scrolling. For
  /// whoever shows the page.
  QWidget* actions() const { return actions_; }

 signals:
  void readRequested();
  void writeRequested();
  void undoRequested();
  void statusChanged(const touch::Notice& status);

 private:
  QWidget* makeBaseSwitch();
  struct Action;
  QWidget* makeButtons(std::initializer_list<Action> actions);
  QWidget* makeFileButtons();
  QWidget* makeActions();
  void fillByte(int row, int column);
  void edited(int row, int column);
  void load();
  void save();
  void compare();

  ParameterEditor& editor_;
  std::filesystem::path workFolder_;
  QTableWidget* table_;
  QPushButton* undo_;
  QWidget* actions_;
};

}  // namespace touch
