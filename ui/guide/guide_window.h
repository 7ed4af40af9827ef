#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace touch {

class GuideBrowser;

/// The user guide inside the program: its chapters, the way back, a search. It is gone when it is
/// closed.
class GuideWindow final : public QDialog {
  Q_OBJECT

 public:
  explicit GuideWindow(QWidget* parent);

  /// `heading` as it stands in the guide.
  void showChapter(const QString& heading);

  /// Esc: the search goes first, then the window.
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QPushButton* makeButton(const char* name, const QString& caption, const QString& hint);
  QWidget* makeBar();
  QWidget* makeSearch();
  void chooseChapter(int row);
  void markChapterInView();
  void openSearch();
  void search(bool backwards);

  QListWidget* chapterList_;
  QComboBox* chapterBox_;  ///< in its place where there is no room beside the text
  GuideBrowser* browser_;
  QWidget* searchBar_ = nullptr;
  QLineEdit* searchText_;
  QLabel* searchResult_;
};

}  // namespace touch
