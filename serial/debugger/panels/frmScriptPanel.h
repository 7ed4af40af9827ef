#pragma once

#include <QWidget>
#include <filesystem>
#include <string>
#include <vector>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace touch {

class ScriptPlayer;

/// The debugger's side for scripts: the chosen one with the line in hand marked, and what runs,
/// pauses and stops it.
class frmScriptPanel final : public QWidget {
  Q_OBJECT

 public:
  /// `player` outlives it. Scripts are looked for in `workFolder` first. The buttons stand in
  /// `columns`.
  frmScriptPanel(ScriptPlayer& player, const std::filesystem::path& workFolder, int columns,
                 QWidget* parent = nullptr);

  /// Shows how far the script has come. `possible`: one can be run now.
  void renew(bool possible);

 signals:
  void runRequested();
  void statusChanged(const QString& text);

 private:
  QPushButton* makeButton(const char* name, const QString& caption);
  void choose();
  void showLines();
  void markLine();

  ScriptPlayer& player_;
  std::filesystem::path folder_;
  QLabel* name_;
  QPlainTextEdit* text_;
  QPushButton* choose_;
  QPushButton* run_;
  QPushButton* pause_;
  QPushButton* stop_;
  std::vector<std::string> shown_;
  int marked_ = 0;
};

}  // namespace touch
