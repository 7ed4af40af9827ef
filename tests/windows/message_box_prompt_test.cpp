#include "ui/message_box_prompt.h"

#include "tests/windows/window_desk.h"

namespace touch::test {
namespace {

class MessageBoxes : public WindowDesk {
 protected:
  using Action = std::function<void(QMessageBox&)>;

  /// Does `action` to the box that comes next.
  static void whenAsked(const Action& action) {
    QTimer::singleShot(0, qApp, [action] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      box == nullptr ? whenAsked(action) : action(*box);
    });
  }
  static Action press(QMessageBox::StandardButton button) {
    return [button](QMessageBox& box) { box.button(button)->click(); };
  }
};

TEST_F(MessageBoxes, TellAnAnswerFromNone) {
  const Action close = [](QMessageBox& box) { box.close(); };
  const Action escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  MessageBoxPrompt boxes;
  const std::tuple<const char*, Action, Answer> questions[] = {
      {"yes", press(QMessageBox::Yes), Answer::yes},
      {"no", press(QMessageBox::No), Answer::no},
      {"its key", escape, Answer::no},
      {"closed", close, Answer::none}};
  for (const auto& [word, action, answer] : questions) {
    whenAsked(action);
    EXPECT_EQ(boxes.ask("Restore it?", defaultTitle), answer) << word;
    whenAsked(action);
    EXPECT_EQ(boxes.confirm("Restore it?"), answer == Answer::yes) << word;
  }
  const std::tuple<const char*, Action, bool> requests[] = {
      {"done", press(QMessageBox::Ok), true}, {"its key", escape, true}, {"closed", close, false}};
  for (const auto& [word, action, done] : requests) {
    whenAsked(action);
    EXPECT_EQ(boxes.await("Disconnect it", defaultTitle), done) << word;
  }
}

}  // namespace
}  // namespace touch::test
