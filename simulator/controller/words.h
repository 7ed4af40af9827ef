#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace touch::simulator {

inline std::string_view withoutBlanks(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The words of a request that have not been read yet.
class Words {
 public:
  explicit Words(std::string_view text) : text_(withoutBlanks(text)) {}

  std::string_view next() {
    const std::string_view word = text_.substr(0, text_.find(' '));
    text_ = withoutBlanks(text_.substr(word.size()));
    return word;
  }
  std::string_view rest() { return std::exchange(text_, {}); }
  bool empty() const { return text_.empty(); }

 private:
  std::string_view text_;
};

inline std::optional<double> numberIn(std::string_view text, double lowest, double highest) {
  double value = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, value);
  if (problem != std::errc() || stop != end) return std::nullopt;
  if (!(value >= lowest && value <= highest)) return std::nullopt;
  return value;
}

inline std::string quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

}  // namespace touch::simulator
