#include "linetest/number_layout.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include "core/language.h"
#include "core/whole_file.h"

namespace touch {

namespace {

constexpr std::size_t zoneWidth = 14;

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
constexpr CharacterSet inNumbers("+-.0123456789eE");

constexpr float leastWithoutExponent = 1e-4F;
constexpr float exponentFrom = 1e7F;

/// The whole token as a number. Words such as "inf" and "nan" are none; a leading plus is allowed.
template <typename Number>
std::optional<Number> parse(std::string_view token) {
  if (token.starts_with('+')) token.remove_prefix(1);
  if (!std::ranges::all_of(token, [](char c) { return inNumbers.holds(c); })) return std::nullopt;
  Number value{};
  const char* end = token.data() + token.size();
  const auto [stop, failed] = std::from_chars(token.data(), end, value);
  if (failed != std::errc() || stop != end) return std::nullopt;
  return value;
}

constexpr std::array powersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                    1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

struct PlainNumber {
  float value = 0;
  std::size_t length = 0;  ///< of its text; 0: to be read in another way
};

// Up to 15 digits, perhaps with a minus and a point. Digits and power of ten are whole doubles then, and their quotient
// is the double next to the number. The float next to that is the one next to the number too, unless the double lies half
// way between two floats: the number may lie on either side of it.
PlainNumber plainNumberAt(std::string_view text) {
  constexpr std::uint64_t belowFloat = (std::uint64_t{1} << 29U) - 1;
  constexpr std::uint64_t halfWay = std::uint64_t{1} << 28U;
  const std::size_t sign = text.starts_with('-') ? 1 : 0;
  std::size_t at = sign;
  std::size_t decimals = 0;
  std::uint64_t digits = 0;
  const auto takeDigits = [&] {
    const std::size_t first = at;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
      digits = 10 * digits + static_cast<unsigned char>(text[at] - '0');
    return at - first;
  };
  std::size_t count = takeDigits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    decimals = takeDigits();
    count += decimals;
  }
  if (count == 0 || count >= powersOfTen.size()) return {};
  const double value = static_cast<double>(digits) / powersOfTen[decimals];
  if ((std::bit_cast<std::uint64_t>(value) & belowFloat) == halfWay) return {};
  const auto nearest = static_cast<float>(value);
  return {sign == 0 ? nearest : -nearest, at};
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

void NumberReader::skipSeparators() {
  std::size_t count = 0;
  for (; count < rest_.size() && separators.holds(rest_[count]); ++count)
    if (rest_[count] == '\n') ++line_;
  rest_.remove_prefix(count);
}

bool NumberReader::atEnd() {
  skipSeparators();
  return failed() || rest_.empty();
}

std::string_view NumberReader::token() {
  skipSeparators();
  const auto end = std::ranges::find_if(rest_, [](char c) { return separators.holds(c); });
  const std::string_view token(rest_.begin(), end);
  rest_.remove_prefix(token.size());
  return token;
}

// Nearly every number of a file, read in one pass.
std::optional<float> NumberReader::plainNumber() {
  skipSeparators();
  const auto [value, length] = plainNumberAt(rest_);
  if (length == 0 || (length < rest_.size() && !separators.holds(rest_[length]))) {
    return std::nullopt;
  }
  rest_.remove_prefix(length);
  return value;
}

float NumberReader::number(std::string_view what) {
  if (failed()) return 0;
  if (const auto plain = plainNumber()) return *plain;
  const std::string_view text = token();
  const auto value = parse<float>(text);
  if (!value) refuse(say("linetest", what), text);
  return value.value_or(0);
}

int NumberReader::integer(int least, int most, std::string_view what) {
  if (failed()) return 0;
  const std::string_view text = token();
  const auto value = parse<int>(text);
  if (value && *value >= least && *value <= most) return *value;
  refuse(say("linetest", what), text);
  return 0;
}

std::string_view NumberReader::label() {
  if (failed()) return {};
  skipSeparators();
  std::string_view label = rest_.substr(0, rest_.find_first_of(",\r\n"));
  rest_.remove_prefix(label.size());
  label = label.substr(0, label.find_last_not_of(" \t") + 1);
  return label;
}

void NumberReader::refuse(std::string_view expected, std::string_view found) {
  if (failed()) return;
  const bool ended = found.empty() && rest_.empty();
  error_ = FileError{file_, line_, std::string(expected),
                     ended ? say("linetest", "the end of the file") : foundText(found)};
}

}  // namespace touch
