#pragma once

#include "support/prompt.h"

class QWidget;

namespace touch {

/// The window that a box belongs to. A full-screen window is in front of all others even while the
/// system still has to make it the active one; a box of another one would bring that one to the
/// front.
QWidget* windowInFront();

/// Message boxes and input boxes over the window that is in front.
class MessageBoxPrompt final : public Prompt {
 public:
  void message(std::string_view text, std::string_view title) override;
  bool await(std::string_view text, std::string_view title) override;
  bool proceed(std::string_view text, std::string_view title) override;
  Answer ask(std::string_view text, std::string_view title) override;
  Answer choose(std::string_view text, std::string_view yes, std::string_view no) override;
  std::optional<std::string> input(std::string_view prompt, std::string_view title) override;
  std::optional<std::string> reason(std::string_view prompt, std::string_view title,
                                    const std::vector<std::string>& usual) override;
};

}  // namespace touch
