#include "linetest/number_layout.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "core/language.h"
#include "core/whole_file.h"

namespace touch {

namespace {

constexpr std::size_t zoneWidth = 14;
constexpr std::size_t leastPiece = std::size_t{16} << 10U;
// A sign, a point, the digits, and what shows that they end there.
constexpr std::size_t longestPlain = 32;

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

/// A minus perhaps, digits, and perhaps a point among them.
struct Decimal {
  std::uint64_t digits = 0;  ///< without the point
  std::size_t count = 0;     ///< of digits
  std::size_t decimals = 0;  ///< of them behind the point
  std::size_t length = 0;    ///< of all of its text
};

Decimal decimalAt(std::string_view text) {
  Decimal decimal;
  std::size_t at = text.starts_with('-') ? 1 : 0;
  const auto takeDigits = [&] {
    const std::size_t first = at;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
      decimal.digits = 10 * decimal.digits + static_cast<unsigned char>(text[at] - '0');
    return at - first;
  };
  decimal.count = takeDigits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    decimal.decimals = takeDigits();
    decimal.count += decimal.decimals;
  }
  decimal.length = at;
  return decimal;
}

constexpr bool firstIsLowest = std::endian::native == std::endian::little;

constexpr std::uint64_t inEachByte(std::uint64_t byte) {
  return byte * 0x0101010101010101U;
}

/// The eight characters at `at`, the first in the lowest byte.
std::uint64_t eightAt(const char* at) {
  std::uint64_t characters = 0;
  std::memcpy(&characters, at, sizeof characters);
  return characters;
}

/// At most eight of them; 0 near the end of the text, too.
std::size_t leadingBlanksOf(std::string_view text) {
  if (text.size() < sizeof(std::uint64_t) || !firstIsLowest) return 0;
  return static_cast<unsigned>(std::countr_zero(eightAt(text.data()) ^ inEachByte(' '))) / 8;
}

struct Digits {
  std::uint64_t value = 0;
  std::size_t count = 0;
};

// Without a loop, since its end would be guessed wrong for every other number.
Digits leadingDigitsOf(std::uint64_t characters) {
  // Of '0' to '9', and of nothing else, the upper half is 3 and stays 3 when 6 is added. What that carries on comes from
  // another character, behind which nothing matters any more.
  constexpr std::uint64_t upper = inEachByte(0xF0);
  constexpr std::uint64_t three = inEachByte(0x30);
  const std::uint64_t others =
      ((characters & upper) ^ three) | (((characters + inEachByte(6)) & upper) ^ three);
  const auto count = static_cast<unsigned>(std::countr_zero(others)) / 8;
  if (count == 0) return {};
  // They move behind zeros, and neighbours are joined: eight digits to four pairs, to two fours, to one number.
  const std::uint64_t digits = (characters << (64 - 8 * count)) & inEachByte(0x0F);
  const std::uint64_t pairs = (digits * 10 + (digits >> 8U)) & 0x00FF00FF00FF00FFU;
  const std::uint64_t fours = (pairs * 100 + (pairs >> 16U)) & 0x0000FFFF0000FFFFU;
  return {(fours * 10000 + (fours >> 32U)) & 0xFFFFFFFFU, count};
}

/// The same where `longestPlain` characters are at hand; without digits when there are eight or more in a row.
Decimal shortDecimalAt(std::string_view text) {
  const std::size_t sign = text.front() == '-' ? 1 : 0;
  const Digits whole = leadingDigitsOf(eightAt(text.data() + sign));
  std::size_t at = sign + whole.count;
  if (whole.count == 8) return {};
  if (text[at] != '.') return {whole.value, whole.count, 0, at};
  ++at;
  const Digits part = leadingDigitsOf(eightAt(text.data() + at));
  if (part.count == 8) return {};
  constexpr std::array<std::uint64_t, 8> shift = {1,      10,      100,       1000,
                                                  10'000, 100'000, 1'000'000, 10'000'000};
  return {whole.value * shift[part.count] + part.value, whole.count + part.count, part.count,
          at + part.count};
}

struct PlainNumber {
  float value = 0;
  std::size_t length = 0;  ///< of its text; 0: to be read in another way
};

// Digits and power of ten of up to 15 digits are whole doubles, and their quotient is the double next to the number. The
// float next to that is the one next to the number too, unless the double lies half way between two floats: the number
// may lie on either side of it.
PlainNumber plainNumberAt(std::string_view text) {
  constexpr std::uint64_t belowFloat = (std::uint64_t{1} << 29U) - 1;
  constexpr std::uint64_t halfWay = std::uint64_t{1} << 28U;
  Decimal decimal;
  if (firstIsLowest && text.size() >= longestPlain) decimal = shortDecimalAt(text);
  if (decimal.count == 0) decimal = decimalAt(text);
  if (decimal.count == 0 || decimal.count >= powersOfTen.size()) return {};
  const double value = static_cast<double>(decimal.digits) / powersOfTen[decimal.decimals];
  if ((std::bit_cast<std::uint64_t>(value) & belowFloat) == halfWay) return {};
  const auto nearest = static_cast<float>(value);
  return {text.front() == '-' ? -nearest : nearest, decimal.length};
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

// After it all of the next plain number is at hand.
void NumberReader::skipSeparators() {
  do {
    std::size_t count = leadingBlanksOf(rest_);
    for (; count < rest_.size() && separators.holds(rest_[count]); ++count)
      if (rest_[count] == '\n') ++line_;
    rest_.remove_prefix(count);
  } while (rest_.size() < longestPlain && refill());
}

std::string_view NumberReader::takeUpTo(bool (*ends)(char)) {
  skipSeparators();
  std::size_t length = 0;
  do {
    while (length < rest_.size() && !ends(rest_[length]))
      ++length;
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
  return takeUpTo([](char c) { return separators.holds(c); });
}

float NumberReader::number(std::string_view what) {
  if (failed()) return 0;
  skipSeparators();
  // Nearly every number of a file is plain.
  const auto [plain, length] = plainNumberAt(rest_);
  if (length > 0 && (length == rest_.size() || separators.holds(rest_[length]))) {
    rest_.remove_prefix(length);
    return plain;
  }
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
  const std::string_view label = takeUpTo([](char c) { return labelEnds.holds(c); });
  return label.substr(0, label.find_last_not_of(" \t") + 1);
}

void NumberReader::refuse(std::string_view expected, std::string_view found) {
  if (failed()) return;
  const bool ended = found.empty() && rest_.empty();
  error_ = FileError{file_, line_, std::string(expected),
                     ended ? say("linetest", "the end of the file") : foundText(found)};
}

}  // namespace touch
