#pragma once

#include <QWidget>
#include <filesystem>

#include "serial/commands/debugger_exchange.h"
#include "serial/commands/typed_line.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace touch {

/// The debugger's side for bytes of one's own: a line of text or hexadecimal digits, shown byte by
/// byte before it is sent, and what comes back.
class frmBytesPanel final : public QWidget {
  Q_OBJECT

 public:
  /// `history` outlives it.
  frmBytesPanel(CommandSet set, SendHistory& history, std::filesystem::path workFolder,
                QWidget* parent = nullptr);

  /// Fills the list of commands to begin with.
  void setCommands(CommandSet set);
  void allowSending(bool possible);
  void showReply(const std::optional<DebuggerReply>& reply);

 signals:
  /// The line has become one of the history.
  void sendRequested(const std::vector<std::uint8_t>& bytes);
  void statusChanged(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  TypedLine line() const;
  void show(const TypedLine& line);
  void takeListed();
  void check();
  void send();
  QPushButton* makeButton(const char* name, const QString& caption,
                          void (frmBytesPanel::*action)());
  void saveHistory();
  void loadHistory();

  SendHistory& history_;
  std::filesystem::path workFolder_;
  CommandSet set_;
  QComboBox* listed_;
  QComboBox* digit_;
  QLineEdit* typed_;
  QComboBox* kind_;
  QPushButton* send_;
  QLabel* bytes_;
  QLabel* replyText_;
  QLabel* replyHex_;
  bool possible_ = false;
};

}  // namespace touch
