#pragma once

#include <QWidget>
#include <array>
#include <filesystem>

#include "console/settings/touch_settings.h"

class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QScrollBar;

namespace touch {

class Actions;
class MainModel;

/// The page "Settings": every control acts at once, but for the scroll bars, which "Confirm" sends.
class frmSettingsPage final : public QWidget {
  Q_OBJECT

 public:
  frmSettingsPage(MainModel& model, Actions& actions, SettingsPanel& panel,
                  std::filesystem::path workFolder);

  /// Buttons that are to be at hand without scrolling. For whoever shows the page.
  QWidget* actions() const { return actions_; }

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Switch {
    QCheckBox* box;
    const Setting* setting;
    bool inverted;  ///< checked means off
  };
  struct BarControls {
    SettingsPanel::Bar bar;
    QScrollBar* scroll;
    QLabel* value;
    QLabel* mark;
  };

  QWidget* makeSwitches();
  QWidget* makeOptions(const char* setting, const char* name, const QString& title,
                       std::initializer_list<int> order, QButtonGroup*& group);
  QWidget* makeTiming();
  void showBar(const BarControls& controls);
  QWidget* makeSensitivity();
  QWidget* makeCursorHelp();
  QWidget* makeActions();
  void showCursorNote();
  void change(const Setting& setting, int value);
  void changeSensitivity(int index);
  void confirm();
  /// Puts what the panel holds into the controls; nothing is sent for it.
  void fill();

  Actions& commands_;
  SettingsPanel& panel_;
  std::filesystem::path workFolder_;
  std::array<Switch, 5> switches_{};
  std::array<BarControls, 3> bars_{};
  QBoxLayout* columns_ = nullptr;
  QWidget* timing_ = nullptr;
  QButtonGroup* rotation_ = nullptr;
  QButtonGroup* touchMode_ = nullptr;
  QComboBox* sensitivity_;
  QPlainTextEdit* cursorHelp_;
  QWidget* actions_;
};

}  // namespace touch
