#pragma once

#include "support/prompt.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// Writes what the user is told to the journal ("message Update OK") and answers as the script
/// says.
class ScriptedPrompt final : public Prompt {
 public:
  explicit ScriptedPrompt(std::vector<std::string>& journal) : journal_(journal) {}

  bool answerYes = true;
  bool answers = true;  ///< no: each question and request is taken away
  std::optional<std::string> answerText;
  std::function<void()> onMessage;   ///< run while the box is up
  std::function<void()> onQuestion;  ///< run while a question is up

  void message(std::string_view text, std::string_view title) override {
    write("message ", text, title);
    if (onMessage) onMessage();
  }
  bool await(std::string_view text, std::string_view title) override {
    message(text, title);
    return answers;
  }
  bool proceed(std::string_view text, std::string_view title) override {
    write("proceed ", text, title);
    return answers && answerYes;
  }
  Answer ask(std::string_view text, std::string_view title) override {
    write("confirm ", text, title);
    if (onQuestion) onQuestion();
    if (!answers) return Answer::none;
    return answerYes ? Answer::yes : Answer::no;
  }
  std::optional<std::string> input(std::string_view prompt, std::string_view title) override {
    write("input ", prompt, title);
    if (onQuestion) onQuestion();
    return answerText;
  }

 private:
  void write(std::string_view kind, std::string_view text, std::string_view title) {
    std::string line = std::string(kind) + std::string(text);
    if (title != defaultTitle) line += " [" + std::string(title) + ']';
    journal_.push_back(line);
  }

  std::vector<std::string>& journal_;
};

}  // namespace touch::test
