#include "support/text/number_layout.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "support/files/whole_file.h"
#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::size_t zoneWidth = 14;
constexpr std::size_t leastPiece = std::size_t{16} << 10U;

/// Whether a character is one of a few: files have millions of them.
class CharacterSet {
 public:
  constexpr explicit CharacterSet(std::string_view characters) {
    for (const char character : characters)
      holds_[static_cast<unsigned char>(character)] = true;
  }
  constexpr bool holds(char character) const {
    return holds_[static_cast<unsigned char>(character)];
  }

 private:
  std::array<bool, 256> holds_{};
};

constexpr CharacterSet separators(" \t,\r\n");
constexpr CharacterSet labelEnds(",\r\n");

constexpr float leastWithoutExponent = 1e-4F;
constexpr float exponentFrom = 1e7F;

/// The whole token as a number. Words such as "inf" and "nan" are none; a leading plus is allowed.
template <typename Number>
std::optional<Number> parse(std::string_view token) {
  if (token.starts_with('+')) token.remove_prefix(1);
  Number value{};
  const char* end = token.data() + token.size();
  const auto [stop, failed] = std::from_chars(token.data(), end, value);
  if (failed != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

using NumberBuffer = std::array<char, 32>;

std::string_view shortest(float value, NumberBuffer& buffer) {
  const float size = std::abs(value);
  if (size == 0) return "0";
  const bool plain = size >= leastWithoutExponent && size < exponentFrom;
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                    plain ? std::chars_format::fixed : std::chars_format::scientific);
  if (!plain) std::replace(buffer.data(), written.ptr, 'e', 'E');
  return {buffer.data(), written.ptr};
}

}  // namespace

std::string shortestText(float value) {
  NumberBuffer buffer;
  return std::string(shortest(value, buffer));
}

std::string fixedText(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  const double rounded = std::round(value * scale) / scale;
  std::array<char, 340> buffer{};
  const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded,
                                     std::chars_format::fixed, decimals);
  return {buffer.data(), written.ptr};
}

std::string threeDigits(int number) {
  std::string digits = std::to_string(number);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  return digits;
}

namespace {

void appendLaidOut(std::string& text, std::string_view number) {
  if (!number.starts_with('-')) text += ' ';
  text.append(number) += ' ';
}

}  // namespace

void appendNumber(std::string& text, float value) {
  NumberBuffer buffer;
  appendLaidOut(text, shortest(value, buffer));
}

void appendNumber(std::string& text, int value) {
  appendLaidOut(text, std::to_string(value));
}

void appendZones(std::string& text, std::initializer_list<float> values) {
  const std::size_t start = text.size();
  for (const float value : values) {
    const std::size_t column = text.size() - start;
    text.append((zoneWidth - column % zoneWidth) % zoneWidth, ' ');
    appendNumber(text, value);
  }
}

/// Makes more of the text be at hand, unless there is no more of it.
bool NumberReader::refill() {
  if (!source_) return false;
  const std::size_t left = rest_.size();
  if (buffer_.size() < 2 * left + leastPiece) {
    std::vector<char> larger(4 * left + leastPiece);
    std::ranges::copy(rest_, larger.begin());
    buffer_ = std::move(larger);
  } else if (left > 0) {
    std::memmove(buffer_.data(), rest_.data(), left);
  }
  const std::size_t count = source_(std::span(buffer_).subspan(left));
  rest_ = {buffer_.data(), left + count};
  if (count == 0) source_ = nullptr;
  return count > 0;
}

void NumberReader::skipSeparators() {
  do {
    std::size_t passed = 0;
    for (; passed < rest_.size() && separators.holds(rest_[passed]); ++passed)
      if (rest_[passed] == '\n') ++line_;
    rest_.remove_prefix(passed);
  } while (rest_.empty() && refill());
}

template <typename Ends>
std::string_view NumberReader::takeUpTo(const Ends& ends) {
  skipSeparators();
  std::size_t length = 0;
  do {
    const auto end = std::find_if(rest_.begin() + static_cast<std::ptrdiff_t>(length), rest_.end(),
                                  [&ends](char c) { return ends.holds(c); });
    length = static_cast<std::size_t>(end - rest_.begin());
  } while (length == rest_.size() && refill());
  const std::string_view taken = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return taken;
}

bool NumberReader::atEnd() {
  skipSeparators();
  return failed() || rest_.empty();
}

std::string_view NumberReader::token() {
  return takeUpTo(separators);
}

float NumberReader::number(std::string_view what) {
  if (failed()) return 0;
  skipSeparators();
  // Read at once where the number ends before what is at hand does: files have millions of them.
  float atHand = 0;
  const char* const end = rest_.data() + rest_.size();
  const auto [stop, wrong] = std::from_chars(rest_.data(), end, atHand);
  if (wrong == std::errc() && stop != end && separators.holds(*stop) && std::isfinite(atHand)) {
    rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
    return atHand;
  }
  const std::string_view text = token();
  const auto value = parse<float>(text);
  if (!value) refuse(say("numbers", what), text);
  return value.value_or(0);
}

int NumberReader::integer(int least, int most, std::string_view what) {
  if (failed()) return 0;
  const std::string_view text = token();
  const auto value = parse<int>(text);
  if (value && *value >= least && *value <= most) return *value;
  refuse(say("numbers", what), text);
  return 0;
}

std::string_view NumberReader::label() {
  if (failed()) return {};
  const std::string_view label = takeUpTo(labelEnds);
  return label.substr(0, label.find_last_not_of(" \t") + 1);
}

void NumberReader::refuse(std::string_view expected, std::string_view found) {
  if (failed()) return;
  const bool ended = found.empty() && rest_.empty();
  error_ = FileError{file_, line_, std::string(expected),
                     ended ? say("numbers", "the end of the file") : foundText(found)};
}

}  // namespace touch
