#include "ui/guide/guide_browser.h"

#include <QFile>
#include <QImageReader>
#include <QScrollBar>
#include <QScroller>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrlQuery>
#include <algorithm>

#include "ui/controls/finger_style.h"

namespace touch {

namespace {

const auto guide = QStringLiteral("qrc:/guide/user-guide.md");
const auto widthInName = QStringLiteral("width");
const auto numberInName = QStringLiteral("chapter");
const auto pictures = QUrl(QStringLiteral("qrc:/guide/images/"));
constexpr qreal margin = 10;
constexpr qreal indent = 20;

/// What is done to a document in its scope is laid out in one go, and makes it no edited one: those
/// are read anew for every link.
class Unnoticed final {
 public:
  explicit Unnoticed(QTextDocument* document) : silent_(document), edit_(document) {
    edit_.beginEditBlock();
  }
  Unnoticed(const Unnoticed&) = delete;
  Unnoticed& operator=(const Unnoticed&) = delete;
  ~Unnoticed() { edit_.endEditBlock(); }

 private:
  QSignalBlocker silent_;
  QTextCursor edit_;
};

/// The chapter `number` of a document, at a place of it or at its beginning.
QUrl placeOf(QUrl document, std::size_t number, const QString& anchor = {}) {
  QUrlQuery query;
  query.addQueryItem(numberInName, QString::number(number));
  document.setQuery(query);
  document.setFragment(anchor.isEmpty() ? QString() : anchor);
  return document;
}

bool isChapter(const QUrl& name) {
  return name.scheme() == "qrc" && name.path().endsWith(".md");
}

QString fileOf(const QUrl& picture) {
  return ":/guide/images/" + picture.fileName();
}

/// Each with its place in the text.
std::vector<std::pair<int, QTextImageFormat>> picturesOf(const QTextDocument& document) {
  std::vector<std::pair<int, QTextImageFormat>> found;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
      if (picture.isValid()) found.emplace_back(part.fragment().position(), picture);
    }
  }
  return found;
}

}  // namespace

GuideBrowser::GuideBrowser(QWidget* parent) : QTextBrowser(parent) {
  document()->setUndoRedoEnabled(false);
  document()->setDocumentMargin(margin);
  document()->setIndentWidth(indent);
  // Dragging scrolls, as fingers expect; so it cannot select as well.
  setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
  QScroller::grabGesture(viewport(), QScroller::LeftMouseButtonGesture);
  connect(this, &QTextBrowser::sourceChanged, this, &GuideBrowser::prepare);
}

void GuideBrowser::showChapter(const QString& heading) {
  QUrl place(guide);
  place.setFragment(anchorOf(heading));
  setSource(place, QTextDocument::MarkdownResource);
}

const std::vector<GuideChapter>& GuideBrowser::chaptersIn(const QUrl& document) const {
  const auto [found, isNew] = documents_.try_emplace(document.path());
  if (isNew) {
    QFile file(':' + document.path());
    const bool isThere = file.open(QIODevice::ReadOnly);
    found->second = chaptersOf(isThere ? QString::fromUtf8(file.readAll()) : QString());
  }
  return found->second;
}

QStringList GuideBrowser::chapters() const {
  QStringList headings;
  for (const GuideChapter& chapter : chaptersIn(QUrl(guide)))
    if (!chapter.heading.isEmpty()) headings.push_back(chapter.heading);
  return headings;
}

std::size_t GuideBrowser::chapterShown() const {
  const auto number = QUrlQuery(source()).queryItemValue(numberInName).toUInt();
  return std::min<std::size_t>(number, chaptersIn(source()).size() - 1);
}

QString GuideBrowser::chapterInView() const {
  if (source().path() != QUrl(guide).path()) return {};
  return chaptersIn(source())[chapterShown()].heading;
}

// A link names a heading of its document; where it stands is known here.
void GuideBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType type) {
  if (!isChapter(name)) return QTextBrowser::doSetSource(name, type);
  if (!name.hasFragment())
    return QTextBrowser::doSetSource(name.hasQuery() ? name : placeOf(name, 0),
                                     QTextDocument::MarkdownResource);
  const QString anchor = name.fragment(QUrl::FullyDecoded);
  const auto& chapters = chaptersIn(name);
  const auto holder = std::ranges::find_if(chapters, [&anchor](const GuideChapter& chapter) {
    return std::ranges::find(chapter.anchors, anchor) != chapter.anchors.end();
  });
  const auto number = holder == chapters.end() ? 0 : holder - chapters.begin();
  QTextBrowser::doSetSource(placeOf(name, static_cast<std::size_t>(number), anchor),
                            QTextDocument::MarkdownResource);
}

bool GuideBrowser::mark(const QString& text, bool backwards) {
  const QTextDocument::FindFlags direction =
      backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (find(text, direction)) return true;
  const auto& chapters = chaptersIn(source());
  const std::size_t shown = chapterShown();
  for (std::size_t step = 1; step <= chapters.size(); ++step) {
    const std::size_t number =
        (shown + (backwards ? chapters.size() - step : step)) % chapters.size();
    QTextDocument chapter;
    chapter.setMarkdown(chapters[number].markdown);
    if (chapter.find(text).isNull()) continue;
    setSource(placeOf(source(), number), QTextDocument::MarkdownResource);
    moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    return find(text, direction);
  }
  return false;
}

// Qt's reading of Markdown gives headings no names, and pictures the size that they have in their
// files.
void GuideBrowser::prepare(const QUrl& source) {
  const QUrl chapter = source.adjusted(QUrl::RemoveFragment);
  if (prepared_ == chapter) return;
  prepared_ = chapter;
  {
    const Unnoticed change(document());
    nameHeadings();
    styleTables();
    wrapCode();
    colourLinks();
    pictureRoom_ = 0;
    fitPictures();
  }
  if (source.hasFragment()) scrollToAnchor(source.fragment());
}

void GuideBrowser::nameHeadings() {
  headings_.clear();
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    const int level = block.blockFormat().headingLevel();
    if (level == 0) continue;
    const QString anchor = anchorOf(block.text());
    headings_.push_back({block.text(), anchor, level, block.position()});
    QTextCursor first(block);
    first.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QTextCharFormat named;
    named.setAnchor(true);
    named.setAnchorNames({anchor});
    first.mergeCharFormat(named);
  }
}

void GuideBrowser::styleTables() {
  constexpr qreal padding = 4;
  QColor border = palette().color(QPalette::Text);
  border.setAlpha(90);
  for (QTextFrame* const frame : document()->rootFrame()->childFrames()) {
    auto* const table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setBorderCollapse(true);
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(border);
    format.setCellPadding(padding);
    format.setCellSpacing(0);
    format.setTopMargin(padding);
    format.setBottomMargin(2 * padding);
    table->setFormat(format);
  }
}

void GuideBrowser::wrapCode() {
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (!block.blockFormat().nonBreakableLines()) continue;
    QTextBlockFormat wrapping;
    wrapping.setNonBreakableLines(false);
    QTextCursor(block).mergeBlockFormat(wrapping);
  }
}

void GuideBrowser::colourLinks() {
  QTextCharFormat coloured;
  coloured.setForeground(linkColour(palette()));
  std::vector<std::pair<int, int>> places;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      if (!part.fragment().charFormat().anchorHref().isEmpty())
        places.emplace_back(part.fragment().position(), part.fragment().length());
    }
  }
  QTextCursor link(document());
  for (const auto& [position, length] : places) {
    link.setPosition(position);
    link.setPosition(position + length, QTextCursor::KeepAnchor);
    link.mergeCharFormat(coloured);
  }
}

void GuideBrowser::fitPictures() {
  const int room = viewport()->width() - 2 * static_cast<int>(margin);
  if (room == pictureRoom_ || room <= 0) return;
  pictureRoom_ = room;
  const Unnoticed change(document());
  for (const auto& [position, format] : picturesOf(*document())) {
    QTextCursor place(document());
    place.setPosition(position);
    const QTextBlock block = place.block();
    const int level = block.textList() != nullptr ? block.textList()->format().indent()
                                                  : block.blockFormat().indent();
    QUrl name = pictures.resolved(QUrl(format.name()).fileName());
    const QSize whole = QImageReader(fileOf(name)).size();
    if (whole.isEmpty()) continue;
    const int width = std::min(whole.width(), room - level * static_cast<int>(indent));
    // The width in the name makes it another picture for Qt, which keeps what it has loaded.
    QUrlQuery query;
    query.addQueryItem(widthInName, QString::number(width));
    name.setQuery(query);
    QTextImageFormat fitted = format;
    fitted.setName(name.toString());
    fitted.setWidth(width);
    fitted.setHeight(static_cast<qreal>(whole.height()) * width / whole.width());
    place.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    place.setCharFormat(fitted);
  }
}

QVariant GuideBrowser::loadResource(int type, const QUrl& name) {
  if (type == QTextDocument::MarkdownResource && isChapter(name)) {
    const auto& chapters = chaptersIn(name);
    const std::size_t number = QUrlQuery(name).queryItemValue(numberInName).toUInt();
    if (number >= chapters.size()) return {};
    QString text = chapters[number].markdown;
    if (number + 1 < chapters.size()) {
      const QString& next = chapters[number + 1].heading;
      text += "\n[" + next + " →](#" + anchorOf(next) + ")\n";
    }
    return text;
  }
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  const int width = QUrlQuery(name).queryItemValue(widthInName).toInt();
  QImage picture(fileOf(name));
  if (picture.isNull() || width <= 0) return picture;
  const qreal ratio = devicePixelRatioF();
  picture = picture.scaledToWidth(qRound(width * ratio), Qt::SmoothTransformation);
  picture.setDevicePixelRatio(ratio);
  return picture;
}

void GuideBrowser::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() != QEvent::PaletteChange || prepared_.isEmpty()) return;
  const Unnoticed change(document());
  styleTables();
  colourLinks();
}

void GuideBrowser::resizeEvent(QResizeEvent* event) {
  // What is read stays at the upper edge, however lines and pictures are laid out anew.
  const QTextCursor top = cursorForPosition(QPoint(0, 0));
  QTextBrowser::resizeEvent(event);
  fitPictures();
  verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(top).top());
}

}  // namespace touch
