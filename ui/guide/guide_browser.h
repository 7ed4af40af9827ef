#pragma once

#include <QTextBrowser>
#include <QUrl>
#include <map>
#include <vector>

#include "ui/guide/guide_text.h"

namespace touch {

/// Shows the documents that are compiled into the program: the user guide and what it refers to.
/// One chapter is shown at a time, because a whole document takes long to lay out, and much memory.
/// Each heading can be linked to as on the web, and pictures are no wider than the window; they are
/// read when they come into view.
class GuideBrowser final : public QTextBrowser {
  Q_OBJECT

 public:
  struct Heading {
    QString text;
    QString anchor;    ///< what stands behind "#" in a link to it
    int level = 0;     ///< 1 is the document's own
    int position = 0;  ///< in the chapter's text
  };

  explicit GuideBrowser(QWidget* parent = nullptr);

  /// The chapters of the user guide that have a heading.
  QStringList chapters() const;
  /// Of the chapter that is shown.
  const std::vector<Heading>& headings() const { return headings_; }
  /// The user guide at the chapter `heading`; at its beginning when there is none.
  void showChapter(const QString& heading);
  /// The heading of the chapter that is shown; empty before the first and outside the guide.
  QString chapterInView() const;
  /// Marks the next place of `text`, or the one before, in whatever chapter of the document; from
  /// the other end again when there is none left. False when the document has none.
  bool mark(const QString& text, bool backwards);

  QVariant loadResource(int type, const QUrl& name) override;

 protected:
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void prepare(const QUrl& source);
  void nameHeadings();
  void styleTables();
  void wrapCode();
  void colourLinks();
  void fitPictures();

  const std::vector<GuideChapter>& chaptersIn(const QUrl& document) const;
  std::size_t chapterShown() const;

  mutable std::map<QString, std::vector<GuideChapter>> documents_;  ///< those read, by path
  QUrl prepared_;  ///< the chapter whose headings and pictures are done
  std::vector<Heading> headings_;
  int pictureRoom_ = 0;
};

}  // namespace touch
