#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace touch {

inline constexpr std::string_view defaultTitle = "TouchUtility";

/// What the user says to a question. None: it was taken away unanswered, because they closed it or
/// the program is to end.
enum class Answer : std::uint8_t { no, yes, none };

/// What the system says to the user and asks of them. Each call returns when they have answered, or
/// never will.
class Prompt {
 public:
  Prompt() = default;
  Prompt(const Prompt&) = delete;
  Prompt& operator=(const Prompt&) = delete;
  virtual ~Prompt() = default;

  /// A box with an OK button only.
  virtual void message(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// The same for something that the user is to do first: true when they say that it is done.
  virtual bool await(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// OK or Cancel: true for OK alone.
  virtual bool proceed(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// Yes or no.
  virtual Answer ask(std::string_view text, std::string_view title = defaultTitle) = 0;
  /// The same where "Yes" and "No" would not say what happens; the buttons, where there are any,
  /// have these captions.
  virtual Answer choose(std::string_view text, std::string_view /*yes*/, std::string_view /*no*/) {
    return ask(text);
  }
  /// True for yes alone.
  bool confirm(std::string_view text, std::string_view title = defaultTitle) {
    return ask(text, title) == Answer::yes;
  }
  /// Whether something may be written that nothing takes back. A shell has to be told so
  /// beforehand.
  virtual bool goWithoutWayBack(std::string_view text) { return confirm(text); }
  /// A line of text, or nothing when the user cancelled.
  virtual std::optional<std::string> input(std::string_view prompt, std::string_view title) = 0;
  /// The same for what others read: one of `usual`, or any other.
  virtual std::optional<std::string> reason(std::string_view prompt, std::string_view title,
                                            const std::vector<std::string>& /*usual*/) {
    return input(prompt, title);
  }
};

}  // namespace touch
