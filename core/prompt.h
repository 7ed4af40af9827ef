#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace touch {

inline constexpr std::string_view defaultTitle = "TouchUtility";

/// What the system says to the user and asks of him. Each call returns when he has answered.
class Prompt {
 public:
  Prompt() = default;
  Prompt(const Prompt&) = delete;
  Prompt& operator=(const Prompt&) = delete;
  virtual ~Prompt() = default;

  /// A box with an OK button only.
  virtual void message(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// Yes or no; closing the box is no.
  virtual bool confirm(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// A line of text, or nothing when the user cancelled.
  virtual std::optional<std::string> input(std::string_view prompt, std::string_view title) = 0;
};

}  // namespace touch
