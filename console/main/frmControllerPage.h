#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "console/main/frmGreeting.h"

class QBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

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

  /// Shows the greeting above all else, until it is answered.
  void greet(std::function<void(frmGreeting::Choice)> choose);

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* makeDetails();
  void setUpList(MainConsole& console);
  QWidget* makeActions(MainConsole& console);
  void showControllers();
  /// Says on each card what is known of its controller.
  void describeControllers();
  void showIdentity();
  void showInformation();

  const MainModel& model_;
  QTableWidget* controllerList_;
  QLabel* emptyHint_;
  QLabel* emptyDrawing_;
  QBoxLayout* halves_ = nullptr;
  QVBoxLayout* rows_ = nullptr;
  QPointer<frmGreeting> greeting_;
  QLabel* chosen_;
  QLabel* unitType_;
  QLabel* firmware_;
  QListWidget* infoList_;
  QPushButton* info_;
  QWidget* actions_;
};

}  // namespace touch
