#include "ui/message_box_prompt.h"

#include "tests/ui/window_desk.h"
#include "ui/screens/full_screen_window.h"

namespace touch::test {
namespace {

class MessageBoxes : public WindowDesk {
 protected:
  using Action = std::function<void(QMessageBox&)>;

  /// Does `action` to the box that comes next.
  static void whenAsked(const Action& action) {
    QTimer::singleShot(0, qApp, [action] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return whenAsked(action);
      EXPECT_TRUE(QTest::qWaitForWindowActive(box)) << "no key of a button counts before";
      action(*box);
    });
  }
  static Action press(QMessageBox::StandardButton button) {
    return [button](QMessageBox& box) { box.button(button)->click(); };
  }
};

TEST_F(MessageBoxes, FitTheScreenHoweverLongTheirText) {
  const QSize screen = QGuiApplication::primaryScreen()->availableSize();
  for (const std::size_t lines : {1u, 10u, 200u}) {
    std::string text;
    for (std::size_t line = 0; line < lines; ++line)
      text += "/home/kiosk/panel/zevrik.fmt, line 3: expected status bytes of no other format\n";
    whenAsked([&](QMessageBox& box) {
      EXPECT_LE(box.width(), screen.width()) << lines;
      EXPECT_LE(box.height(), screen.height()) << lines;
      box.button(QMessageBox::Ok)->click();
    });
    MessageBoxPrompt().message(text, defaultTitle);
  }
}

TEST_F(MessageBoxes, TellAnAnswerFromNone) {
  const Action close = [](QMessageBox& box) { box.close(); };
  const Action escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  MessageBoxPrompt boxes;
  const std::tuple<const char*, Action, Answer> questions[] = {
      {"yes", press(QMessageBox::Yes), Answer::yes},
      {"no", press(QMessageBox::No), Answer::no},
      {"its key", escape, Answer::none},
      {"closed", close, Answer::none}};
  for (const auto& [word, action, answer] : questions) {
    whenAsked(action);
    EXPECT_EQ(boxes.ask("Restore it?", defaultTitle), answer) << word;
    whenAsked(action);
    EXPECT_EQ(boxes.confirm("Restore it?"), answer == Answer::yes) << word;
  }
  whenAsked([](QMessageBox& box) {
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), "&Restore");
    QTest::keyClick(&box, Qt::Key_K, Qt::AltModifier);
  });
  EXPECT_EQ(boxes.choose("Found.", "Restore", "Keep"), Answer::no);
  for (const auto& [yes, no, key] :
       {std::tuple("Stay", "Start over", Qt::Key_T), std::tuple("Save", "1 by 1", Qt::Key_B)}) {
    whenAsked([key = key](QMessageBox& box) { QTest::keyClick(&box, key, Qt::AltModifier); });
    EXPECT_EQ(boxes.choose("Found.", yes, no), Answer::no) << no;
  }
  using Request = bool (Prompt::*)(std::string_view, std::string_view);
  const std::tuple<const char*, Request, Action, bool> requests[] = {
      {"done", &Prompt::await, press(QMessageBox::Ok), true},
      {"done, its key", &Prompt::await, escape, true},
      {"not done, closed", &Prompt::await, close, false},
      {"OK", &Prompt::proceed, press(QMessageBox::Ok), true},
      {"Cancel", &Prompt::proceed, press(QMessageBox::Cancel), false},
      {"Cancel, its key", &Prompt::proceed, escape, false},
      {"OK or Cancel, closed", &Prompt::proceed, close, false}};
  for (const auto& [word, request, action, done] : requests) {
    whenAsked(action);
    EXPECT_EQ((static_cast<Prompt&>(boxes).*request)("Disconnect it", defaultTitle), done) << word;
  }
}

TEST_F(MessageBoxes, TakeAReasonThatIsSeenWhileItIsTyped) {
  using Steps = std::function<void(QDialog&)>;
  const auto answered = [](const Steps& steps) {
    QTimer::singleShot(0, qApp, [steps] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
      const QSize screen = QGuiApplication::primaryScreen()->availableSize();
      find<QPushButton>(*dialog, "cmdScreenKeyboard")->click();
      QApplication::processEvents();
      EXPECT_LE(dialog->width(), screen.width());
      EXPECT_LE(dialog->height(), screen.height());
      steps(*dialog);
    });
    return MessageBoxPrompt().reason("Why?", "Settings", {"no time", "done before"});
  };
  const auto box = [](QDialog& dialog) { return find<QComboBox>(dialog, "reason"); };
  EXPECT_EQ(answered([&](QDialog& dialog) {
              box(dialog)->setCurrentIndex(1);
              dialog.accept();
            }),
            "done before");
  EXPECT_EQ(answered([&](QDialog& dialog) {
              EXPECT_EQ(box(dialog)->lineEdit()->echoMode(), QLineEdit::Normal);
              for (const char* const key : {"screenKey_N", "screenKey_O"})
                find<QPushButton>(dialog, key)->click();
              dialog.accept();
            }),
            "NO");
  EXPECT_EQ(answered([](QDialog& dialog) { dialog.reject(); }), std::nullopt);
}

TEST_F(MessageBoxes, BelongToTheFullScreenWindowBeforeTheSystemHasMadeItTheActiveOne) {
  struct Screen final : FullScreenWindow {
    using FullScreenWindow::FullScreenWindow;
    void started() override {}
  };
  QWidget main;
  main.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&main));
  Screen screen(*QGuiApplication::primaryScreen(), QSize(300, 200), [] {});
  screen.setAttribute(Qt::WA_ShowWithoutActivating);
  screen.show();
  whenAsked([&screen](QMessageBox& box) {
    EXPECT_EQ(box.parentWidget(), &screen);
    box.close();
  });
  MessageBoxPrompt boxes;
  boxes.confirm("Restore it?");
}

}  // namespace
}  // namespace touch::test
