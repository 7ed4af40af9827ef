#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

// How numbers stand in the text files of the drawing screens. The decimal separator is always a
// point.
//
// A number has a leading blank, or a minus when it is negative, and a trailing blank. Numbers of
// one record that are laid out in print zones start at columns 0, 14, 28 …: each at the next such
// column after the one before it. A record ends with CR LF. On reading, blanks, tabs, commas and
// line ends (LF or CR LF) separate numbers alike.

inline constexpr std::string_view recordEnd = "\r\n";

/// The fewest digits from which the same single-precision value is read again: "1234.5", "-0.25";
/// from ten million on, and below a ten-thousandth, with an exponent: "1.5E+07". `value` is finite.
std::string shortestText(float value);

/// Rounded to `decimals` places, halves away from zero, with all of them shown: "0.50". A negative
/// value keeps its minus when it rounds to zero: it still tells the side.
std::string fixedText(double value, int decimals);

/// At least three digits: "007".
std::string threeDigits(int number);

void appendNumber(std::string& text, float value);
void appendNumber(std::string& text, int value);
/// One record of numbers in print zones, without its end.
void appendZones(std::string& text, std::initializer_list<float> values);

/// Puts the next characters of a text into `piece`, which is not empty, and says how many: 0 at the
/// end.
using TextSource = std::function<std::size_t(std::span<char> piece)>;

/// Reads such a text. The first thing that is wrong is kept in `error()`; from then on every
/// reading gives 0, an empty text, or the end, so that a caller may look once after several
/// readings.
class NumberReader {
 public:
  NumberReader(std::string_view text, std::string fileName)
      : rest_(text), file_(std::move(fileName)) {}
  /// A text that is longer than what should be in memory of it.
  NumberReader(TextSource source, std::string fileName)
      : source_(std::move(source)), file_(std::move(fileName)) {}
  NumberReader(const NumberReader&) = delete;
  NumberReader& operator=(const NumberReader&) = delete;

  /// Nothing but separators is left.
  bool atEnd();
  /// `what` says in the error what was expected, e.g. marked("numbers", "the x of a sample").
  float number(std::string_view what);
  /// A whole number from `least` to `most`.
  int integer(int least, int most, std::string_view what);
  /// The rest of the line, or up to a comma, without blanks around it; to be used before the next
  /// reading.
  std::string_view label();
  /// Refuses what was read last.
  void refuse(std::string_view expected, std::string_view found);

  bool failed() const { return error_.has_value(); }
  const FileError& error() const { return *error_; }

 private:
  bool refill();
  void skipSeparators();
  template <typename Ends>
  std::string_view takeUpTo(const Ends& ends);
  std::string_view token();

  std::string_view rest_;     ///< what is at hand of the text and has not been read
  TextSource source_;         ///< of what follows it; none when nothing does
  std::vector<char> buffer_;  ///< holds `rest_` when there is a source
  std::string file_;
  int line_ = 1;
  std::optional<FileError> error_;
};

}  // namespace touch
