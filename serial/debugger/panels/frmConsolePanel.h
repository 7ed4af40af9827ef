#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>

#include "reports/report_decoder.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/console_view.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QTextCursor;

namespace touch {

/// The debugger's console: what its log holds, in colours, with a filter and a search, to be copied
/// and saved.
class frmConsolePanel final : public QWidget {
  Q_OBJECT

 public:
  /// `makeDecoder` knows the packets of the chosen command set.
  frmConsolePanel(ConsoleLog& log, const std::filesystem::path& workFolder,
                  std::function<ReportDecoder()> makeDecoder, QWidget* parent = nullptr);

  /// The controls for what is shown and kept, which stand where there is room for them.
  QWidget* filterBar() { return filterBar_; }
  QWidget* keepBar() { return keepBar_; }
  QCheckBox* pauseBox() { return pause_; }

  /// Shows what has come to the log since.
  void renew();
  /// It wants to be renewed again although nothing more comes.
  bool isLooking() const { return view_.isLooking(); }
  void copy();
  void save();
  void findNext();

 signals:
  void doubleClicked();
  void statusChanged(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeFilterBar();
  QWidget* makeKeepBar();
  ConsoleFilter filter() const;
  ConsoleWriter makeWriter() const;
  void showAll();
  /// As many at the end.
  void showLast(std::size_t count);
  bool isAtEnd() const;
  void append(QTextCursor& cursor, const ConsoleLine& line);
  /// Marks the byte at the cursor, and says what it holds.
  void markByte();

  ConsoleLog& log_;
  std::filesystem::path workFolder_;
  std::function<ReportDecoder()> makeDecoder_;
  QPlainTextEdit* text_;  // Text1
  QComboBox* kinds_;
  QComboBox* times_;
  QLineEdit* searched_;
  QCheckBox* onlyMatches_;
  QCheckBox* pause_;
  QWidget* filterBar_;
  QWidget* keepBar_;
  ConsoleView view_;
  ConsoleWriter writer_;  ///< of the line behind them
};

}  // namespace touch
