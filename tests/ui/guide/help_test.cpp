#include "ui/guide/help.h"

#include <QTextBlock>

#include "tests/ui/every_window.h"
#include "ui/guide/guide_browser.h"

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
    const QPointer<GuideWindow> guide = window.findChild<GuideWindow*>();
    // A target must not be covered; and a guide would hear nothing while a driver is waited for.
    const bool opensNone = where.starts_with("frmCal") || where.starts_with("frmCheck") ||
                           where.starts_with("driverHangs");
    EXPECT_EQ(guide == nullptr, opensNone);
    if (guide == nullptr) return;
    EXPECT_TRUE(QTest::qWaitForWindowActive(guide));
    auto* const text = find<GuideBrowser>(*guide, "guideText");
    const auto heading = std::ranges::find(text->headings(), QString::fromStdString(chapter),
                                           &GuideBrowser::Heading::text);
    ASSERT_NE(heading, text->headings().end()) << chapter;
    QTextCursor place(text->document());
    place.setPosition(heading->position);
    const QRect line = text->cursorRect(place);
    EXPECT_TRUE(line.top() >= 0 && line.top() < 30) << chapter << " at " << line.top();
    for (const bool backwards : {false, true})
      EXPECT_TRUE(text->mark("User guide", backwards)) << "once round, if need be";
    QTest::keyClick(guide, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(guide, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  });
}

/// The guide by itself.
class Guide : public testing::Test {
 protected:
  Guide() {
    browser.resize(600, 400);
    browser.showChapter({});
  }
  GuideBrowser browser;
};

TEST_F(Guide, EachLinkLeadsToItsHeadingInWhateverChapter) {
  for (const QString& chapter : browser.chapters()) {
    browser.showChapter(chapter);
    EXPECT_EQ(browser.chapterInView(), chapter);
    std::vector<QString> links;
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next())
      for (auto part = block.begin(); !part.atEnd(); ++part)
        if (const QString link = part.fragment().charFormat().anchorHref(); link.contains('#'))
          links.push_back(link);
    for (const QString& link : links) {
      browser.setSource(browser.source().resolved(QUrl(link)));
      const auto& there = browser.headings();
      EXPECT_NE(std::ranges::find(there, QUrl(link).fragment(), &GuideBrowser::Heading::anchor),
                there.end())
          << chapter.toStdString() << ": " << link.toStdString();
      browser.showChapter(chapter);
    }
  }
}

TEST_F(Guide, ATextIsFoundInAllChaptersAndTheWayBackIsThere) {
  ASSERT_TRUE(browser.mark("Permission for a serial port", false)) << "in the list of contents";
  std::set<QString> chapters;
  for (int place = 0; place < 12; ++place) {
    chapters.insert(browser.chapterInView());
    ASSERT_TRUE(browser.mark("Permission for a serial port", false));
  }
  EXPECT_THAT(chapters, testing::SizeIs(testing::Ge(4U)));
  EXPECT_FALSE(browser.mark("nobody wrote this", true));
  const QString before = browser.chapterInView();
  browser.showChapter("Doctor");
  browser.backward();
  EXPECT_EQ(browser.chapterInView(), before);
}

TEST(GuideText, ChaptersBeginAtHeadingsAndNotInCode) {
  const auto chapters = chaptersOf("# A\nb\n## C d!\n```sh\n## no\n```\n### E\n## F\n");
  ASSERT_EQ(chapters.size(), 3U);
  EXPECT_THAT(chapters[1].anchors, testing::ElementsAre("c-d", "e"));
  EXPECT_EQ(chapters[1].markdown, "## C d!\n```sh\n## no\n```\n### E\n");
}

}  // namespace
}  // namespace touch::test
