#pragma once

#include <QWidget>
#include <array>

#include "core/session.h"
#include "serial/commands/debugger_exchange.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace touch {

/// The debugger's side for commands: the three sets, the list, what belongs to the chosen entry,
/// "Send" and the reply.
class frmCommandPanel final : public QWidget {
  Q_OBJECT

 public:
  explicit frmCommandPanel(CommandSet set, QWidget* parent = nullptr);

  SendChoice choice() const;
  /// Fills the reply labels; nothing clears them.
  void showReply(const std::optional<DebuggerReply>& reply);
  void allowSending(bool possible);
  /// Puts the focus on the command list.
  void focusEntries();

 signals:
  void setChosen(CommandSet set);
  void sendRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeSets(CommandSet set);
  QWidget* makeSetting();
  QWidget* makeAddress();
  QWidget* makeData();
  void cm1set();
  void entryChosen();
  void typed(QLineEdit& box);
  void leave(QLineEdit& box);

  CommandSet set_;
  QComboBox* entries_;     // Combo1
  QPushButton* send_;      // Command2_0
  QWidget* settingPanel_;  // with Combo2
  QLabel* settingCaption_;
  QComboBox* settings_;    // Combo2
  QWidget* addressPanel_;  // with VScroll1
  QScrollBar* address_;    // VScroll1
  QLabel* addressLabel_;   // lblAddress
  QGroupBox* dataPanel_;   // "DATA VALUE"
  QLineEdit* high_;        // Text2
  QLineEdit* low_;         // Text5
  std::array<QLabel*, 3> reply_;
};

}  // namespace touch
