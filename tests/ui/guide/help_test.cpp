#include "ui/guide/help.h"

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

}  // namespace
}  // namespace touch::test
