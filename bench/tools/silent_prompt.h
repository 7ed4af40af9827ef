#pragma once

#include <stdexcept>
#include <string>

#include "support/prompt.h"

namespace touch::bench {

/// Nobody is there to answer: whatever would be said to the user is a failure of the measurement.
class SilentPrompt final : public Prompt {
 public:
  void message(std::string_view text, std::string_view) override { fail(text); }
  bool await(std::string_view text, std::string_view) override { fail(text); }
  bool proceed(std::string_view text, std::string_view) override { fail(text); }
  Answer ask(std::string_view text, std::string_view) override { fail(text); }
  std::optional<std::string> input(std::string_view text, std::string_view) override { fail(text); }

 private:
  [[noreturn]] static void fail(std::string_view text) {
    throw std::runtime_error(std::string(text));
  }
};

}  // namespace touch::bench
