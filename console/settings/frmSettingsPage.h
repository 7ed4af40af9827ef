#pragma once

#include <QWidget>
#include <array>
#include <filesystem>

#include "console/settings/settings_panel.h"

class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QScrollBar;

namespace touch {

/// The page "Settings": every control acts at once, but for the scroll bars, which "Confirm" sends.
class frmSettingsPage final : public QWidget {
  Q_OBJECT

 public:
  frmSettingsPage(SettingsPanel& panel, std::filesystem::path workFolder,
                  QWidget* parent = nullptr);

  /// Puts what the panel holds into the controls; nothing is sent for it.
  void fill();
  /// Buttons that are to be at hand without scrolling. For whoever shows the page.
  QWidget* actions() const { return actions_; }

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 signals:
  void changeRequested(const Setting* setting, int value);
  void sensitivityRequested(int index);
  void confirmRequested();
  /// The cursor note has come up, below the other controls.
  void noteShown(QWidget* note);
  void statusChanged(const touch::Notice& status);

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
