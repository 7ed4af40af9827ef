#include "ui/message_box_prompt.h"

#include <QAbstractButton>
#include <QMessageBox>

#include "tests/windows/window_desk.h"

namespace touch {
namespace {

/// Does `action` to the box that comes next.
void whenAsked(const std::function<void(QMessageBox&)>& action) {
  QTimer::singleShot(0, qApp, [action] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    box == nullptr ? whenAsked(action) : action(*box);
  });
}

TEST(MessageBoxes, TellAnAnswerFromNone) {
  // Where a test before this one has ended its program, boxes would end at once.
  QTimer::singleShot(0, qApp, &QCoreApplication::quit);
  QApplication::exec();
  MessageBoxPrompt prompt;
  const auto close = [](QMessageBox& box) { box.close(); };
  const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
  const auto press = [](QMessageBox::StandardButton button) {
    return [button](QMessageBox& box) { box.button(button)->click(); };
  };
  const struct {
    const char* word;
    std::function<void(QMessageBox&)> action;
    Answer answer;
  } questions[] = {{"yes", press(QMessageBox::Yes), Answer::yes},
                   {"no", press(QMessageBox::No), Answer::no},
                   {"its key", escape, Answer::no},
                   {"closed", close, Answer::none}};
  for (const auto& [word, action, answer] : questions) {
    whenAsked(action);
    EXPECT_EQ(prompt.ask("Restore it?", defaultTitle), answer) << word;
    whenAsked(action);
    EXPECT_EQ(prompt.confirm("Restore it?"), answer == Answer::yes) << word;
  }
  const struct {
    const char* word;
    std::function<void(QMessageBox&)> action;
    bool done;
  } requests[] = {
      {"done", press(QMessageBox::Ok), true}, {"its key", escape, true}, {"closed", close, false}};
  for (const auto& [word, action, done] : requests) {
    whenAsked(action);
    EXPECT_EQ(prompt.await("Disconnect it", defaultTitle), done) << word;
  }
}

}  // namespace
}  // namespace touch
