#include "ui/help.h"

#include <algorithm>
#include <set>

#include "tests/windows/every_window.h"
#include "ui/guide_browser.h"

namespace touch::test {
namespace {

class Help : public EveryWindow {};

TEST_F(Help, EachWindowOpensTheGuideAtItsChapter) {
  std::set<std::string> seen;
  visitAll([&](const std::string& where, QWidget& window) {
    SCOPED_TRACE(where);
    const std::string chapter = helpChapter(window).toStdString();
    if (where.starts_with("guide") || !seen.insert(where.substr(0, 8) + chapter).second) return;
    // F1 has always shown the keys there.
    const bool showsKeys = where.starts_with("frmDraw") || where.starts_with("frmRsDraw");
    QTest::keyClick(&window, Qt::Key_F1, showsKeys ? Qt::ControlModifier : Qt::NoModifier);
    QPointer<GuideWindow> guide = window.findChild<GuideWindow*>();
    if (where == "frmCal") {
      EXPECT_EQ(guide, nullptr) << "a calibration must not be covered";
      return;
    }
    ASSERT_NE(guide, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(guide));
    const auto* const text = find<GuideBrowser>(*guide, "guideText");
    const auto heading = std::ranges::find(text->headings(), QString::fromStdString(chapter),
                                           &GuideBrowser::Heading::text);
    ASSERT_NE(heading, text->headings().end()) << chapter;
    QTextCursor place(text->document());
    place.setPosition(heading->position);
    const QRect line = text->cursorRect(place);
    EXPECT_TRUE(line.top() >= 0 && line.top() < 30) << chapter << " at " << line.top();
    QTest::keyClick(guide, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(guide, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  });
}

TEST(Guide, EveryLinkAndPictureIsThere) {
  GuideBrowser browser;
  std::map<QString, QStringList> anchors;
  std::vector<QUrl> links;
  for (const char* const name : {"user-guide.md", "measuring.md", "file-formats.md"}) {
    browser.setSource(QUrl(QString("qrc:/guide/") + name), QTextDocument::MarkdownResource);
    for (const auto& heading : browser.headings()) {
      EXPECT_FALSE(anchors[name].contains(heading.anchor)) << heading.text.toStdString();
      anchors[name] << heading.anchor;
    }
    const auto* const document = browser.document();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        const QUrl picture(format.toImageFormat().name());
        EXPECT_TRUE(!format.isImageFormat() || QFileInfo::exists(":" + picture.path()))
            << picture.path().toStdString();
        if (!format.anchorHref().isEmpty())
          links.push_back(browser.source().resolved(QUrl(format.anchorHref())));
      }
    }
  }
  EXPECT_GE(links.size(), 30U);
  for (const QUrl& link : links) {
    const auto target = anchors.find(link.fileName());
    EXPECT_TRUE(target != anchors.end() &&
                (!link.hasFragment() || target->second.contains(link.fragment())))
        << link.toString().toStdString();
  }
}

}  // namespace
}  // namespace touch::test
