#include "linetest/number_layout.h"

#include <array>
#include <charconv>
#include <cmath>

#include "core/whole_file.h"

namespace touch {

namespace {

constexpr std::size_t zoneWidth = 14;
constexpr std::string_view separators = " \t,\r\n";
constexpr float leastWithoutExponent = 1e-4F;
constexpr float exponentFrom = 1e7F;

/// The whole token as a number. Words such as "inf" and "nan" are none; a leading plus is allowed.
template <typename Number>
std::optional<Number> parse(std::string_view token) {
  if (token.starts_with('+')) token.remove_prefix(1);
  if (token.find_first_not_of("+-.0123456789eE") != token.npos) return std::nullopt;
  Number value{};
  const char* end = token.data() + token.size();
  const auto [stop, failed] = std::from_chars(token.data(), end, value);
  if (failed != std::errc() || stop != end) return std::nullopt;
  return value;
}

}  // namespace

std::string shortestText(float value) {
  const float size = std::abs(value);
  if (size == 0) return "0";
  const bool plain = size >= leastWithoutExponent && size < exponentFrom;
  std::array<char, 32> buffer;
  const auto written =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                    plain ? std::chars_format::fixed : std::chars_format::scientific);
  std::string text(buffer.data(), written.ptr);
  if (const auto exponent = text.find('e'); exponent != text.npos) text[exponent] = 'E';
  return text;
}

std::string fixedText(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  const double rounded = std::round(value * scale) / scale;
  std::array<char, 340> buffer;
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
  appendLaidOut(text, shortestText(value));
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
  while (!rest_.empty() && separators.find(rest_.front()) != separators.npos) {
    if (rest_.front() == '\n') ++line_;
    rest_.remove_prefix(1);
  }
}

bool NumberReader::atEnd() {
  skipSeparators();
  return failed() || rest_.empty();
}

std::string_view NumberReader::token() {
  skipSeparators();
  const std::string_view token = rest_.substr(0, rest_.find_first_of(separators));
  rest_.remove_prefix(token.size());
  return token;
}

float NumberReader::number(std::string_view what) {
  if (failed()) return 0;
  const std::string_view text = token();
  const auto value = parse<float>(text);
  if (!value) refuse(what, text);
  return value.value_or(0);
}

int NumberReader::integer(int least, int most, std::string_view what) {
  if (failed()) return 0;
  const std::string_view text = token();
  const auto value = parse<int>(text);
  if (value && *value >= least && *value <= most) return *value;
  refuse(what, text);
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
                     ended ? "the end of the file" : foundText(found)};
}

}  // namespace touch
