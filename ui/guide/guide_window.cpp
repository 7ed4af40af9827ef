#include "ui/guide/guide_window.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScroller>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/controls/finger_style.h"
#include "ui/guide/guide_browser.h"

namespace touch {

namespace {

constexpr QSize preferredSize(940, 720);
constexpr int widthForList = 640;
constexpr int gap = 6;

}  // namespace

GuideWindow::GuideWindow(QWidget* parent)
    : QDialog(parent, Qt::Window),
      chapterList_(new QListWidget),
      chapterBox_(new QComboBox),
      browser_(new GuideBrowser),
      searchText_(new QLineEdit),
      searchResult_(new QLabel) {
  setObjectName("guideWindow");
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("User guide"));
  browser_->setObjectName("guideText");
  browser_->setAccessibleName(tr("User guide"));
  chapterList_->setObjectName("chapterList");
  chapterList_->setAccessibleName(tr("Chapters"));
  chapterList_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  chapterList_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QScroller::grabGesture(chapterList_->viewport(), QScroller::LeftMouseButtonGesture);
  chapterBox_->setObjectName("chapterBox");
  chapterBox_->setAccessibleName(tr("Chapters"));
  chapterBox_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  chapterBox_->setMinimumContentsLength(8);

  auto* const middle = new QHBoxLayout;
  middle->setSpacing(gap);
  middle->addWidget(chapterList_);
  middle->addWidget(browser_, 1);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(gap, gap, gap, gap);
  column->setSpacing(isSmallScreen() ? 2 : gap);
  column->addWidget(makeBar());
  column->addLayout(middle, 1);
  searchBar_ = makeSearch();
  column->addWidget(searchBar_);
  // For those to whom the windows speak another language.
  constexpr auto inEnglish = QT_TR_NOOP("The user guide is in English.");
  if (const QString note = tr(inEnglish); note != inEnglish) {
    auto* const label = new QLabel(note);
    label->setObjectName("lblLanguage");
    label->setWordWrap(true);
    column->addWidget(label);
  }
  resize(preferredSize.boundedTo(parent->screen()->availableSize()));

  browser_->showChapter({});
  int widest = 0;
  for (const QString& heading : browser_->chapters()) {
    auto* const item = new QListWidgetItem(heading, chapterList_);
    item->setSizeHint({0, fingerSize()});
    chapterBox_->addItem(heading);
    widest = std::max(widest, chapterList_->fontMetrics().horizontalAdvance(heading));
  }
  chapterList_->setFixedWidth(widest + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4 * gap);

  connect(chapterList_, &QListWidget::itemClicked, this,
          [this] { chooseChapter(chapterList_->currentRow()); });
  connect(chapterList_, &QListWidget::currentRowChanged, this, &GuideWindow::chooseChapter);
  connect(chapterBox_, &QComboBox::activated, this, &GuideWindow::chooseChapter);
  connect(browser_, &QTextBrowser::sourceChanged, this, &GuideWindow::markChapterInView);
  for (const auto& [key, backwards] :
       {std::pair(QKeySequence::FindNext, false), std::pair(QKeySequence::FindPrevious, true)}) {
    connect(new QShortcut(key, this), &QShortcut::activated, this,
            [this, back = backwards] { search(back); });
  }
  browser_->setFocus();
}

QPushButton* GuideWindow::makeButton(const char* name, const QString& caption,
                                     const QString& hint) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setToolTip(hint);
  button->setAutoDefault(false);  // Enter belongs to the search
  makeFingerSized(*button);
  return button;
}

QWidget* GuideWindow::makeBar() {
  auto* const back = makeButton("cmdBack", "←", tr("Back to what was shown before"));
  auto* const forward = makeButton("cmdForward", "→", tr("Forward again"));
  for (QPushButton* const arrow : {back, forward}) {
    arrow->setAccessibleName(arrow->toolTip());
    arrow->setEnabled(false);
    arrow->setFixedWidth(fingerSize());
  }
  back->setShortcut(QKeySequence::Back);
  forward->setShortcut(QKeySequence::Forward);
  auto* const find = makeButton("cmdFind", tr("&Find"), tr("Finds a text (Ctrl+F)"));
  auto* const close = makeButton("cmdClose", tr("&Close"), tr("Closes the user guide (Esc)"));

  connect(back, &QPushButton::clicked, browser_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(find, &QPushButton::clicked, this, &GuideWindow::openSearch);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this,
          &GuideWindow::openSearch);
  connect(close, &QPushButton::clicked, this, &QWidget::close);

  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(back);
  row->addWidget(forward);
  row->addWidget(chapterBox_, 1);
  row->addStretch();
  row->addWidget(find);
  row->addWidget(close);
  return bar;
}

QWidget* GuideWindow::makeSearch() {
  searchText_->setObjectName("searchText");
  searchText_->setAccessibleName(tr("Text to find"));
  searchText_->setPlaceholderText(tr("Text to find"));
  searchResult_->setObjectName("searchResult");
  auto* const next = makeButton("cmdFindNext", tr("&Next"), tr("The next place (Enter, F3)"));
  connect(searchText_, &QLineEdit::returnPressed, this, [this] { search(false); });
  connect(searchText_, &QLineEdit::textEdited, searchResult_, &QLabel::clear);
  connect(next, &QPushButton::clicked, this, [this] { search(false); });
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(searchText_, 1);
  row->addWidget(searchResult_);
  row->addWidget(next);
  bar->hide();
  return bar;
}

void GuideWindow::showChapter(const QString& heading) {
  browser_->showChapter(heading);
  markChapterInView();
}

void GuideWindow::chooseChapter(int row) {
  if (row >= 0) browser_->showChapter(chapterBox_->itemText(row));
}

void GuideWindow::markChapterInView() {
  const int row = chapterBox_->findText(browser_->chapterInView());
  const QSignalBlocker silent(chapterList_);
  chapterList_->setCurrentRow(row);
  chapterBox_->setCurrentIndex(row);
}

void GuideWindow::openSearch() {
  searchBar_->show();
  searchText_->selectAll();
  searchText_->setFocus();
}

void GuideWindow::search(bool backwards) {
  if (searchText_->text().isEmpty()) return openSearch();
  searchResult_->setText(browser_->mark(searchText_->text(), backwards) ? QString()
                                                                        : tr("Not found"));
}

void GuideWindow::reject() {
  if (searchBar_->isVisible()) {
    searchBar_->hide();
    browser_->setFocus();
    return;
  }
  QWidget* const below = parentWidget();
  QDialog::reject();
  below->activateWindow();
}

void GuideWindow::closeEvent(QCloseEvent* event) {
  searchBar_->hide();
  QDialog::closeEvent(event);
}

void GuideWindow::resizeEvent(QResizeEvent* event) {
  const bool wide = width() >= widthForList;
  chapterList_->setVisible(wide);
  chapterBox_->setVisible(!wide);
  QDialog::resizeEvent(event);
}

}  // namespace touch
