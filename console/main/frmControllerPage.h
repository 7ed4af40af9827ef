#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "core/discovery/identity.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace touch {

/// The page "Controller": which controllers there are and what the chosen one says of itself.
class frmControllerPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmControllerPage(QWidget* parent = nullptr);

  void showControllers(const std::vector<std::string>& names, std::optional<std::size_t> selected);
  void showIdentity(const Identity& identity);
  void showInformation(const std::vector<std::string>& lines);
  /// Buttons that are to be at hand without scrolling. For whoever shows the page.
  QWidget* actions() const { return actions_; }

 signals:
  void controllerChosen(int index);
  void refreshRequested();
  void informationRequested();
  void portSearchRequested();

 private:
  QTableWidget* controllerList_;
  QLabel* emptyHint_;
  QLabel* unitType_;
  QLabel* firmware_;
  QListWidget* infoList_;
  QPushButton* info_;
  QPushButton* search_;
  QWidget* actions_;
};

}  // namespace touch
