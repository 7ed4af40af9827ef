#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>

#include "reports/report_decoder.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/console_view.h"

class QCheckBox;
class QComboBox;
class QKeyEvent;
class QLineEdit;
class QPlainTextEdit;
class QScrollBar;
class QTextCursor;

namespace touch {

class ColumnHeading;

/// The debugger's console: what its log holds, in colours, with a filter and a search, to be copied
/// and saved. The text has a part of the log's lines only, which slides along as the user scrolls;
/// the scroll bar is that of all of them.
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
  void findOn();

 signals:
  void doubleClicked();
  void statusChanged(const QString& text);
  /// It has begun to look, see `isLooking`.
  void moreWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeFilterBar();
  QWidget* makeKeepBar();
  ConsoleFilter filter() const;
  ConsoleWriter makeWriter() const;
  /// Shows what has become of the view's lines.
  void showChange();
  void showAll();
  /// As many at the end.
  void showLast(std::size_t count);
  bool isAtEnd() const;
  void followAtEnd();
  void showColumns();
  void showPlace();
  /// The text was scrolled, by whatever means.
  void takePlace();
  /// Gets the lines beyond those of the text as soon as whatever scrolls it is through.
  void settleSoon();
  void settle();
  bool isHeld() const;
  /// Shows all from this line of the log on, whether the text has it or not.
  void goTo(std::uint64_t number);
  void goToEnd();
  /// The bar of all lines was moved.
  void scrollTo(int value);
  bool takeKey(const QKeyEvent& key);
  std::uint64_t topNumber() const;
  void scrollToLine(std::size_t index);

  /// A place in the text that stays the same when other lines stand before it.
  struct TextPlace {
    std::uint64_t line = 0;
    int column = 0;
  };
  TextPlace placeAt(int position) const;
  int positionOf(const TextPlace& place) const;
  void keepCursor();
  void append(QTextCursor& cursor, const ConsoleLine& line);
  /// Marks the byte at the cursor, and says what it holds.
  void markByte();

  ConsoleLog& log_;
  std::filesystem::path workFolder_;
  std::function<ReportDecoder()> makeDecoder_;
  QPlainTextEdit* text_;  // Text1
  QScrollBar* bar_;       ///< of all lines that are kept
  ColumnHeading* columns_;
  QComboBox* kinds_;
  QComboBox* times_;
  QLineEdit* searched_;
  QCheckBox* onlyMatches_;
  QCheckBox* pause_;
  QWidget* filterBar_;
  QWidget* keepBar_;
  ConsoleView view_;
  std::optional<ConsoleSearch> search_;  ///< the last one
  ConsoleWriter writer_;                 ///< of the line behind them
  TextPlace cursor_;
  TextPlace anchor_;
  bool writing_ = false;   ///< the text moves by itself
  bool settling_ = false;  ///< `settle` is to be called
  bool toEnd_ = false;     ///< it followed before its size changed
  bool pressed_ = false;
};

}  // namespace touch
