#pragma once

#include <QTextBrowser>
#include <vector>

namespace touch {

/// Shows the documents that are compiled into the program: the user guide and what it refers to.
/// Each heading can be linked to as on the web, and pictures are no wider than the window; they are
/// read when they come into view.
class GuideBrowser final : public QTextBrowser {
  Q_OBJECT

 public:
  struct Heading {
    QString text;
    QString anchor;    ///< what stands behind "#" in a link to it
    int level = 0;     ///< 1 is the document's own
    int position = 0;  ///< in the document's text
  };

  explicit GuideBrowser(QWidget* parent = nullptr);

  /// Of the document that is shown.
  const std::vector<Heading>& headings() const { return headings_; }
  /// The user guide at the chapter `heading`; at its beginning when there is none.
  void showChapter(const QString& heading);
  /// The chapter, which has level 2, that the upper edge of the view lies in; empty before the
  /// first and outside the guide.
  QString chapterInView() const;
  /// Marks the next place of `text`, or the one before; from the other end again when there is none
  /// left. False when the document has none.
  bool mark(const QString& text, bool backwards);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void prepare(const QUrl& source);
  void nameHeadings();
  void styleTables();
  void wrapCode();
  void colourLinks();
  void fitPictures();

  QString prepared_;  ///< the document whose headings and pictures are done
  std::vector<Heading> headings_;
  int pictureRoom_ = 0;
};

}  // namespace touch
