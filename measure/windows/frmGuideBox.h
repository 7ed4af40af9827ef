#pragma once

#include <QFrame>
#include <functional>
#include <optional>
#include <vector>

#include "measure/judging/verdict.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace touch::measure {

/// The box on a canvas that says what to touch, with buttons to go on and back.
class frmGuideBox final : public QFrame {
  Q_OBJECT

 public:
  frmGuideBox(const char* name, const char* titleName, const char* instructionName,
              QWidget* parent);

  /// `hint` names the key that does the same. The caller lays the button out in `grid`.
  QPushButton* addButton(const char* name, const QString& caption, const QString& hint,
                         std::function<void()> action);

  /// Shows a drawing of the guide, "rubbing", between title and instruction; an empty name takes it
  /// away. `description` is for those who cannot see it.
  void showDrawing(const QString& name, const QString& description = {});

  /// How what is shown was judged, to be seen from afar; nothing takes it away. In a box that is
  /// too narrow it stays away: the instruction says it, too.
  void showOutcome(std::optional<Outcome> outcome);
  /// As high as it has to be for this width.
  void fit(int width);

  /// The title with the outcome behind it.
  QWidget& head() { return *head_; }
  QLabel& title() { return *title_; }
  QLabel& drawing() { return *drawing_; }
  QLabel& instruction() { return *instruction_; }
  QGridLayout& grid() { return *grid_; }
  /// In the order in which they were added.
  const std::vector<QPushButton*>& buttons() const { return buttons_; }

 private:
  QWidget* head_;
  QLabel* title_;
  QLabel* outcome_;
  bool isJudged_ = false;
  QLabel* drawing_;
  QLabel* instruction_;
  QGridLayout* grid_;
  std::vector<QPushButton*> buttons_;
};

}  // namespace touch::measure
