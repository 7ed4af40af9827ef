#pragma once

#include <QWidget>

#include "console/parameter_editor.h"

class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace touch {

/// The page "Parameters": the eight words of the parameter block, high and low byte, old beside new.
class frmParametersPage final : public QWidget {
  Q_OBJECT

 public:
  frmParametersPage(ParameterEditor& editor, std::filesystem::path workFolder,
                    QWidget* parent = nullptr);

  /// Puts what the editor holds into the table.
  void fill();

 signals:
  void readRequested();
  void writeRequested();
  void undoRequested();
  void statusChanged(const QString& text);

 private:
  QWidget* makeBaseSwitch();
  QWidget* makeButtons();
  void edited(int row, int column);
  void load();
  void save();
  void compare();
  /// The file that the user chose to open; empty when he cancelled.
  QString chooseFile(const QString& title);

  ParameterEditor& editor_;
  std::filesystem::path workFolder_;
  QTableWidget* table_;
  QPushButton* undo_;
};

}  // namespace touch
